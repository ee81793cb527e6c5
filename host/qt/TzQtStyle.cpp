// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace {

void DrawOutline(const QStyleOption& option, const QRect& area, QPainter& painter) {
  // One that has the focus is outlined in the palette's colour for that already.
  if ((option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_Enabled)) return;
  constexpr qreal kHalfPixel = 0.5;
  constexpr qreal kRounding = 2.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(option.palette.color(QPalette::Mid));
  painter.drawRoundedRect(QRectF(area).adjusted(kHalfPixel, kHalfPixel, -kHalfPixel, -kHalfPixel), kRounding,
                          kRounding);
  painter.restore();
}

}  // namespace

TzQtStyle::TzQtStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void TzQtStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element == PE_IndicatorBranch && (option->state & State_Selected)) {
    QStyleOption selected(*option);
    selected.palette.setColor(QPalette::WindowText, option->palette.color(QPalette::HighlightedText));
    selected.palette.setColor(QPalette::ButtonText, option->palette.color(QPalette::HighlightedText));
    selected.palette.setColor(QPalette::Text, option->palette.color(QPalette::HighlightedText));
    QProxyStyle::drawPrimitive(element, &selected, painter, widget);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  const bool isField = element == PE_PanelLineEdit && frame != nullptr && frame->lineWidth > 0;
  if (isField || element == PE_IndicatorCheckBox || element == PE_Frame)
    DrawOutline(*option, option->rect, *painter);
}

void TzQtStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_SpinBox || control == CC_ComboBox) DrawOutline(*option, option->rect, *painter);
}
