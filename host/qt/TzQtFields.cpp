// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtFields.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

#include "host/kelpui/UI_NumberEdit.h"
#include "host/kelpui/UI_Popup.h"
#include "host/kelpui/UI_TextEdit.h"
#include "host/qt/TzQtMnemonics.h"
#include "host/qt/TzQtText.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

constexpr int kLabelGap = 6;

/// A field that turns only while it has the focus: a wheel that scrolls a list mustn't change what lies in
/// it.
template <typename Field>
class Steady : public Field {
 public:
  explicit Steady(QWidget* parent) : Field(parent) { Field::setFocusPolicy(Qt::StrongFocus); }

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (Field::hasFocus()) {
      Field::wheelEvent(event);
    } else {
      event->ignore();
    }
  }
};

/// A field between the label in front of it and a text behind it. All three stand in a widget of the node.
class FieldMirror : public TzQtMirror {
 public:
  FieldMirror(UI_Node& node, QWidget* parent) : TzQtMirror(node, new QWidget(parent)) {}

  void Refresh() override {
    GetWidget()->setToolTip(GetTooltip());
    field->setEnabled(GetNode().IsEnabled());
    label->setText(MarkTzMnemonic(GetCaption(), GetMnemonic()));
    label->setVisible(!GetCaption().isEmpty());
    const QString behind = GetTextBehind();
    trailer->setText(behind);
    trailer->setVisible(!behind.isEmpty());
    const QString name = QString(GetCaption() + QLatin1Char(' ') + behind).trimmed();
    if (name.isEmpty()) {
      SetAccessibleName(*field);
    } else {
      field->setAccessibleName(name);
    }
  }

  [[nodiscard]] TzQtRoom Measure() const override {
    const TzQtRoom own = MeasureField();
    const QSize beside(labelWidth + TakeGap(labelWidth) + GetTrailerWidth() + TakeGap(GetTrailerWidth()), 0);
    return {(own.minimum + beside).expandedTo({0, label->sizeHint().height()}),
            (own.preferred + beside).expandedTo({0, label->sizeHint().height()})};
  }

  void Place(const QRect& area) override {
    TzQtMirror::Place(area);
    const QRect all(QPoint(), area.size());
    // Beside a field of several lines the label stands at the first of them.
    const int labelHeight = std::min(area.height(), std::max(label->sizeHint().height(), GetLineHeight()));
    const int start = labelWidth + TakeGap(labelWidth);
    const int end = GetTrailerWidth() + TakeGap(GetTrailerWidth());
    const auto put = [&](QWidget* widget, const QRect& place) {
      widget->setGeometry(QStyle::visualRect(widget->layoutDirection(), all, place));
    };
    put(label, {labelIndent, 0, labelWidth - labelIndent, labelHeight});
    put(field, {start, 0, std::max(area.width() - start - end, 0), area.height()});
    put(trailer, {area.width() - GetTrailerWidth(), 0, GetTrailerWidth(), area.height()});
  }

  [[nodiscard]] QWidget* GetFocusWidget() const override { return field; }
  [[nodiscard]] QString GetCaption() const override { return ToShownText(GetNode().GetName()).trimmed(); }
  [[nodiscard]] int GetLabelWidth() const override {
    return GetCaption().isEmpty() ? 0 : label->sizeHint().width();
  }
  void SetLabelWidth(int width, int indent) override {
    labelWidth = width;
    labelIndent = indent;
  }

 protected:
  /// To be called once, by the constructor.
  void SetField(QWidget* ownField) {
    label = new QLabel(GetWidget());
    field = ownField;
    trailer = new QLabel(GetWidget());
    label->setBuddy(field);
    trailer->setTextFormat(Qt::PlainText);
    Refresh();
    labelWidth = GetLabelWidth();
  }

  [[nodiscard]] virtual TzQtRoom MeasureField() const {
    return {field->minimumSizeHint(), field->sizeHint()};
  }
  [[nodiscard]] virtual int GetLineHeight() const { return field->sizeHint().height(); }
  [[nodiscard]] virtual QString GetTextBehind() const { return {}; }

 private:
  [[nodiscard]] int GetTrailerWidth() const {
    return trailer->text().isEmpty() ? 0 : trailer->sizeHint().width();
  }
  static int TakeGap(int width) { return width > 0 ? kLabelGap : 0; }

  QLabel* label = nullptr;
  QWidget* field = nullptr;
  QLabel* trailer = nullptr;
  int labelWidth = 0;
  int labelIndent = 0;
};

/// The width of a field for so many characters.
int GetWidthOfCharacters(const QWidget& field, int characters) {
  constexpr int kFrameAndCursor = 12;
  return field.fontMetrics().averageCharWidth() * characters + kFrameAndCursor;
}

constexpr int kUsualCharacters = 20;
constexpr int kLeastCharacters = 8;

class TextFieldMirror : public FieldMirror {
 public:
  TextFieldMirror(UI_TextEdit& edit, QWidget* parent)
      : FieldMirror(edit, parent), shown(new QLineEdit(GetWidget())) {
    // Qt cuts a text off at its limit without a word.
    shown->setMaxLength(std::numeric_limits<int>::max());
    const boost::intrusive_ptr<UI_TextEdit> entered(&edit);
    QObject::connect(shown, &QLineEdit::textEdited, shown,
                     [entered](const QString& text) { entered->EnterText(FromQtText(text)); });
    SetField(shown);
  }

  void Refresh() override {
    FieldMirror::Refresh();
    const QString text = ToQtText(static_cast<const UI_TextEdit&>(GetNode()).GetText());
    if (shown->text() == text) return;
    const QSignalBlocker quiet(shown);
    const int cursor = shown->cursorPosition();
    shown->setText(text);
    // A title that is longer than its field shows how it begins; a person who types stays where they are.
    shown->setCursorPosition(shown->hasFocus() ? cursor : 0);
  }

 protected:
  [[nodiscard]] TzQtRoom MeasureField() const override {
    const int characters = GetNode().GetPresentation().characters.value_or(kUsualCharacters);
    const int height = shown->sizeHint().height();
    return {{GetWidthOfCharacters(*shown, std::min(kLeastCharacters, characters)), height},
            {GetWidthOfCharacters(*shown, characters), height}};
  }

 private:
  QLineEdit* shown;
};

class LongTextFieldMirror : public FieldMirror {
 public:
  LongTextFieldMirror(UI_TextEdit& edit, QWidget* parent)
      : FieldMirror(edit, parent), shown(new QPlainTextEdit(GetWidget())) {
    shown->setTabChangesFocus(true);
    shown->setVerticalScrollBarPolicy(edit.GetPresentation().scrollable ? Qt::ScrollBarAsNeeded
                                                                        : Qt::ScrollBarAlwaysOff);
    const boost::intrusive_ptr<UI_TextEdit> entered(&edit);
    QObject::connect(shown, &QPlainTextEdit::textChanged, shown,
                     [entered, widget = shown] { entered->EnterText(FromQtText(widget->toPlainText())); });
    SetField(shown);
  }

  void Refresh() override {
    FieldMirror::Refresh();
    const QString text = ToQtText(static_cast<const UI_TextEdit&>(GetNode()).GetText());
    if (shown->toPlainText() == text) return;
    const QSignalBlocker quiet(shown);
    shown->setPlainText(text);
  }

 protected:
  [[nodiscard]] TzQtRoom MeasureField() const override {
    const UI_Presentation& look = GetNode().GetPresentation();
    const int characters = look.characters.value_or(kUsualCharacters);
    const int lines = look.lines.value_or(2);
    const int around = 2 * (shown->frameWidth() + static_cast<int>(shown->document()->documentMargin()));
    const int line = shown->fontMetrics().lineSpacing();
    return {{GetWidthOfCharacters(*shown, kLeastCharacters), line + around},
            {GetWidthOfCharacters(*shown, characters), line * lines + around}};
  }
  [[nodiscard]] int GetLineHeight() const override {
    return shown->fontMetrics().lineSpacing() + 2 * shown->frameWidth() + 4;
  }

 private:
  QPlainTextEdit* shown;
};

class NumberFieldMirror : public FieldMirror {
 public:
  NumberFieldMirror(UI_NumberEdit& edit, QWidget* parent)
      : FieldMirror(edit, parent), shown(new Steady<QDoubleSpinBox>(GetWidget())) {
    shown->setDecimals(edit.GetData().decimalPlaces);
    shown->setRange(edit.GetData().minimum, edit.GetData().maximum);
    shown->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    const boost::intrusive_ptr<UI_NumberEdit> entered(&edit);
    QObject::connect(shown, &QDoubleSpinBox::valueChanged, shown,
                     [entered](double number) { entered->EnterValue(number); });
    SetField(shown);
  }

  void Refresh() override {
    FieldMirror::Refresh();
    const auto& edit = static_cast<const UI_NumberEdit&>(GetNode());
    const QSignalBlocker quiet(shown);
    if (const QString unit = ToQtText(edit.GetInlineUnit()); shown->suffix() != unit) shown->setSuffix(unit);
    if (shown->value() != edit.GetValue()) shown->setValue(edit.GetValue());
  }

 protected:
  [[nodiscard]] QString GetTextBehind() const override {
    return ToShownText(static_cast<const UI_NumberEdit&>(GetNode()).GetLabel()).trimmed();
  }

 private:
  QDoubleSpinBox* shown;
};

class PopupMirror : public FieldMirror {
 public:
  PopupMirror(UI_Popup& popup, QWidget* parent)
      : FieldMirror(popup, parent), shown(new Steady<QComboBox>(GetWidget())) {
    const boost::intrusive_ptr<UI_Popup> entered(&popup);
    QObject::connect(shown, &QComboBox::activated, shown, [entered](int index) {
      if (index >= 0) entered->EnterIndex(static_cast<std::size_t>(index));
    });
    SetField(shown);
  }

  void Refresh() override {
    FieldMirror::Refresh();
    const auto& popup = static_cast<const UI_Popup&>(GetNode());
    const QSignalBlocker quiet(shown);
    QStringList names;
    for (const UI_PopupItem& item : popup.GetItems()) names.push_back(ToQtText(item.name));
    if (names != shownNames) {
      shown->clear();
      shown->addItems(names);
      shownNames = names;
    }
    const std::optional<std::size_t> chosen = popup.GetChosenIndex();
    const int index = chosen ? static_cast<int>(*chosen) : -1;
    if (shown->currentIndex() != index) shown->setCurrentIndex(index);
  }

 protected:
  [[nodiscard]] TzQtRoom MeasureField() const override {
    constexpr int kArrow = 24;
    const QSize all = shown->sizeHint();
    const int characters = GetNode().GetPresentation().popupMaximumWidthChars.value_or(kLeastCharacters);
    return {{std::min(all.width(), GetWidthOfCharacters(*shown, characters) + kArrow), all.height()}, all};
  }

 private:
  QComboBox* shown;
  QStringList shownNames;
};

}  // namespace

std::unique_ptr<TzQtMirror> MakeTzField(UI_Node& node, QWidget* parent) {
  switch (node.GetKind()) {
    case UI_NodeKind::TextEdit:
      if (node.GetPresentation().multiline) {
        return std::make_unique<LongTextFieldMirror>(static_cast<UI_TextEdit&>(node), parent);
      }
      return std::make_unique<TextFieldMirror>(static_cast<UI_TextEdit&>(node), parent);
    case UI_NodeKind::NumberEdit:
      return std::make_unique<NumberFieldMirror>(static_cast<UI_NumberEdit&>(node), parent);
    case UI_NodeKind::Popup:
      return std::make_unique<PopupMirror>(static_cast<UI_Popup&>(node), parent);
    default:
      return nullptr;
  }
}
