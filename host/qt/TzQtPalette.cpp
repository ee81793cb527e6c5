// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtPalette.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

#include "host/qt/TzQtColorPreference.h"
#include "host/qt/TzQtStyle.h"

namespace {

struct RoleColor {
  QPalette::ColorRole role;
  QRgb color;
  QRgb disabled;
};

constexpr RoleColor kLight[] = {
    {QPalette::Window, 0xFFF3F3F3, 0xFFF3F3F3},
    {QPalette::WindowText, 0xFF1B1B1B, 0xFF8A8A8A},
    {QPalette::Base, 0xFFFFFFFF, 0xFFF3F3F3},
    {QPalette::AlternateBase, 0xFFF7F7F7, 0xFFF3F3F3},
    {QPalette::Text, 0xFF1B1B1B, 0xFF8A8A8A},
    {QPalette::Button, 0xFFEDEDED, 0xFFEDEDED},
    {QPalette::ButtonText, 0xFF1B1B1B, 0xFF8A8A8A},
    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::ToolTipBase, 0xFFFFFFE6, 0xFFFFFFE6},
    {QPalette::ToolTipText, 0xFF1B1B1B, 0xFF1B1B1B},
    {QPalette::Highlight, 0xFF1F62B5, 0xFFA8A8A8},
    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Link, 0xFF1F62B5, 0xFF8A8A8A},
    {QPalette::LinkVisited, 0xFF6B3FA0, 0xFF8A8A8A},
    {QPalette::PlaceholderText, 0xFF767676, 0xFF8A8A8A},
    {QPalette::Light, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Midlight, 0xFFE3E3E3, 0xFFE3E3E3},
    {QPalette::Mid, 0xFF8A8A8A, 0xFFC4C4C4},
    {QPalette::Dark, 0xFF9F9F9F, 0xFF9F9F9F},
    {QPalette::Shadow, 0xFF767676, 0xFF767676},
};

constexpr RoleColor kDark[] = {
    {QPalette::Window, 0xFF2B2B2B, 0xFF2B2B2B},
    {QPalette::WindowText, 0xFFECECEC, 0xFF8C8C8C},
    {QPalette::Base, 0xFF1E1E1E, 0xFF2B2B2B},
    {QPalette::AlternateBase, 0xFF262626, 0xFF2B2B2B},
    {QPalette::Text, 0xFFECECEC, 0xFF8C8C8C},
    {QPalette::Button, 0xFF3A3A3A, 0xFF333333},
    {QPalette::ButtonText, 0xFFECECEC, 0xFF8C8C8C},
    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::ToolTipBase, 0xFF3A3A3A, 0xFF3A3A3A},
    {QPalette::ToolTipText, 0xFFECECEC, 0xFFECECEC},
    {QPalette::Highlight, 0xFF2F6FC4, 0xFF555555},
    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFC8C8C8},
    {QPalette::Link, 0xFF7FB2F0, 0xFF8C8C8C},
    {QPalette::LinkVisited, 0xFFB79BE0, 0xFF8C8C8C},
    {QPalette::PlaceholderText, 0xFF9A9A9A, 0xFF8C8C8C},
    {QPalette::Light, 0xFF505050, 0xFF505050},
    {QPalette::Midlight, 0xFF454545, 0xFF454545},
    {QPalette::Mid, 0xFF858585, 0xFF555555},
    {QPalette::Dark, 0xFF191919, 0xFF191919},
    {QPalette::Shadow, 0xFF101010, 0xFF101010},
};

template <std::size_t count>
QPalette MakePalette(const RoleColor (&colors)[count]) {
  QPalette palette;
  for (const RoleColor& each : colors) {
    palette.setColor(QPalette::Active, each.role, QColor::fromRgb(each.color));
    palette.setColor(QPalette::Inactive, each.role, QColor::fromRgb(each.color));
    palette.setColor(QPalette::Disabled, each.role, QColor::fromRgb(each.disabled));
  }
  return palette;
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// With outlines that can be seen: dark palettes of platforms have those of light ones, darker than the
/// window.
QPalette WithOutlines(QPalette palette) {
  const QColor window = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::WindowText);
  palette.setColor(QPalette::Mid, QColor((window.red() + text.red()) / 2, (window.green() + text.green()) / 2,
                                         (window.blue() + text.blue()) / 2));
  return palette;
}

void Apply(const QPalette& palette) {
  // A platform's own style may draw in its own colours, whatever the palette says.
  QApplication::setStyle(new TzQtStyle);
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

}  // namespace

TzPalette ReadTzPalette(const QString& word) {
  const QString lower = word.trimmed().toLower();
  if (lower == QLatin1String("light")) return TzPalette::Light;
  return lower == QLatin1String("dark") ? TzPalette::Dark : TzPalette::System;
}

void TzApplyPalette(TzPalette palette) {
  static const QPalette ownToolTips = QToolTip::palette();
  static const QString ownStyle = QApplication::style()->name();
  if (palette != TzPalette::System) {
    Apply(palette == TzPalette::Dark ? MakePalette(kDark) : MakePalette(kLight));
    return;
  }
  if (QApplication::style()->name() != ownStyle) QApplication::setStyle(ownStyle);
  // An empty palette stands for the platform's own.
  QApplication::setPalette(QPalette());
  QToolTip::setPalette(ownToolTips);
  const QPalette own = QApplication::palette();
  if (IsDark(own)) {
    if (ownStyle == QLatin1String("fusion")) Apply(WithOutlines(own));
  } else if (TzDesktopPrefersDark()) {
    Apply(MakePalette(kDark));
  }
}
