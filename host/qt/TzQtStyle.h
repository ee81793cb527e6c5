// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

/// Fusion with outlines that can be seen: it draws the edges of fields and check boxes a little darker than
/// the window, which on a dark palette nobody sees, and in a list, whose ground is that of the fields, even
/// less. The outline is the palette's `Mid`. The arrow that folds a row has the colour of the selected row's
/// text.
class TzQtStyle : public QProxyStyle {
 public:
  TzQtStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};
