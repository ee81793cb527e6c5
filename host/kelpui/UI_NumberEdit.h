// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/kelpui/UI_Control.h"

namespace kelpui::controls {

/// Which numbers a field takes.
struct UI_NumberData {
  double minimum = 0.0;
  double maximum = 0.0;
  int decimalPlaces = 0;

  /// The nearest number that the field can show; what is no number at all gives the minimum.
  [[nodiscard]] double GetNearest(double number) const;
};

/// A field of a number, with a unit behind it inside the field ("%") and a label beside it.
class UI_NumberEdit : public UI_Control {
 public:
  explicit UI_NumberEdit(const UI_NumberData& numbers)
      : UI_Control(UI_NodeKind::NumberEdit), data(numbers), value(numbers.GetNearest(numbers.minimum)) {}

  [[nodiscard]] const UI_NumberData& GetData() const { return data; }
  [[nodiscard]] double GetValue() const { return value; }
  /// Both take the nearest number that the field can show.
  void SetValue(double number);
  void EnterValue(double number);
  /// The person typed. False, and no change, if the text is no number; a unit behind it is passed over.
  bool EnterText(const TzString& text);
  /// The number as the field shows it, without the unit.
  [[nodiscard]] TzString GetText() const;

  [[nodiscard]] const TzString& GetInlineUnit() const { return inlineUnit; }
  void SetInlineUnit(const TzString& unit);
  /// Shown behind the field.
  [[nodiscard]] const TzString& GetLabel() const { return label; }
  void SetLabel(const TzString& text);

 private:
  UI_NumberData data;
  double value;
  TzString inlineUnit;
  TzString label;
};

}  // namespace kelpui::controls
