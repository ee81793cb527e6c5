// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtControls.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>

#include "host/kelpui/UI_Checkbox.h"
#include "host/kelpui/UI_PictureButton.h"
#include "host/kelpui/UI_StaticText.h"
#include "host/qt/TzQtImages.h"
#include "host/qt/TzQtMnemonics.h"
#include "host/qt/TzQtText.h"

using namespace kelpui::controls;  // NOLINT(google-build-using-namespace)

namespace {

Qt::FocusPolicy GetFocusPolicy(const UI_Node& node) {
  return node.GetPresentation().wantsFocus ? Qt::StrongFocus : Qt::NoFocus;
}

/// The caption with line feeds for blanks, so that no line is wider than this as far as its words allow.
QString BreakLines(const QString& caption, int width, const QFontMetrics& font) {
  QString broken = caption;
  qsizetype start = 0;
  qsizetype blank = -1;
  for (qsizetype place = 0; place <= broken.size(); ++place) {
    if (place < broken.size() && broken[place] != QLatin1Char(' ')) continue;
    if (blank >= 0 && font.horizontalAdvance(broken.mid(start, place - start)) > width) {
      broken[blank] = QLatin1Char('\n');
      start = blank + 1;
    }
    blank = place;
  }
  return broken;
}

/// A caption that is too long for its button takes more lines where the sheet tells a height that has room
/// for them.
class ButtonMirror : public TzQtMirror {
 public:
  ButtonMirror(UI_Button& button, QWidget* parent) : ButtonMirror(button, new QPushButton(parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    shown->setAccessibleName(GetCaption());
    ShowCaption();
  }
  [[nodiscard]] QString GetCaption() const override { return ToShownText(GetNode().GetName()); }
  [[nodiscard]] TzQtRoom Measure() const override {
    // A style's padding is no need: where the sheet tells the width, the caption alone has to fit.
    const QFontMetrics font = shown->fontMetrics();
    const QSize size = shown->sizeHint();
    const QString lines = IsTall() ? BreakLines(GetCaption(), 0, font) : GetCaption();
    const int caption = font.size(0, lines).width() + kLeastPadding;
    // One that may choose its width has more air around a long caption than the style gives it.
    const int roomy = std::max(caption + kLeastPadding, size.width());
    return {{std::min(caption, size.width()), size.height()}, {roomy, size.height()}};
  }
  void Place(const QRect& area) override {
    TzQtMirror::Place(area);
    ShowCaption();
  }

 private:
  static constexpr int kLeastPadding = 12;

  [[nodiscard]] bool IsTall() const {
    constexpr int kMostLines = 4;
    return GetNode().GetPresentation().height.value_or(0) >= kMostLines * shown->fontMetrics().lineSpacing();
  }
  void ShowCaption() {
    const int width = shown->width() - kLeastPadding;
    const QString caption = IsTall() ? BreakLines(GetCaption(), width, shown->fontMetrics()) : GetCaption();
    shown->setText(MarkTzMnemonic(caption, GetMnemonic()));
  }

  ButtonMirror(UI_Button& button, QPushButton* widget) : TzQtMirror(button, widget), shown(widget) {
    shown->setAutoDefault(false);
    shown->setFocusPolicy(GetFocusPolicy(button));
    const boost::intrusive_ptr<UI_Button> pressed(&button);
    QObject::connect(shown, &QPushButton::clicked, shown, [pressed] { pressed->Press(); });
  }

  QPushButton* shown;
};

/// Shows its image, and its name beside it where the button has room for that.
class PictureButtonMirror : public TzQtMirror {
 public:
  PictureButtonMirror(UI_PictureButton& button, QWidget* parent)
      : PictureButtonMirror(button, new QToolButton(parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    SetAccessibleName(*shown);
    shown->setText(MarkTzMnemonic(GetCaption(), GetMnemonic()));
    shown->setToolButtonStyle(IsCaptionShown() ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
  }
  [[nodiscard]] QString GetCaption() const override {
    return IsCaptionShown() ? ToShownText(GetNode().GetName()) : QString();
  }
  [[nodiscard]] TzQtRoom Measure() const override { return {shown->iconSize(), shown->sizeHint()}; }
  void Place(const QRect& area) override {
    // A button of the image's own size has no room for the frame that a style draws around it.
    const QSize image = GetTzIconSize(shown->icon());
    shown->setIconSize(image.isEmpty() ? shown->iconSize() : image.boundedTo(area.size()));
    TzQtMirror::Place(area);
  }

 private:
  PictureButtonMirror(UI_PictureButton& button, QToolButton* widget)
      : TzQtMirror(button, widget), shown(widget) {
    shown->setAutoRaise(true);
    shown->setFocusPolicy(GetFocusPolicy(button));
    shown->setIcon(MakeTzIcon(button.GetImage()));
    if (const QSize image = GetTzIconSize(shown->icon()); !image.isEmpty()) shown->setIconSize(image);
    const boost::intrusive_ptr<UI_PictureButton> pressed(&button);
    QObject::connect(shown, &QToolButton::clicked, shown, [pressed] { pressed->Press(); });
  }

  [[nodiscard]] bool IsCaptionShown() const {
    const bool isInLayout =
        GetNode().GetParent() != nullptr && GetNode().GetParent()->GetKind() != UI_NodeKind::SubView;
    return isInLayout && !GetNode().GetName().IsEmpty() && !GetNode().GetPresentation().width;
  }

  QToolButton* shown;
};

class CheckboxMirror : public TzQtMirror {
 public:
  CheckboxMirror(UI_Checkbox& box, QWidget* parent) : CheckboxMirror(box, new QCheckBox(parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    const QSignalBlocker quiet(shown);
    shown->setText(MarkTzMnemonic(GetCaption(), GetMnemonic()));
    shown->setChecked(static_cast<const UI_Checkbox&>(GetNode()).GetValue() != 0);
    shown->setAccessibleName(GetSpokenName());
  }
  [[nodiscard]] QString GetCaption() const override { return ToShownText(GetNode().GetName()); }

 private:
  CheckboxMirror(UI_Checkbox& box, QCheckBox* widget) : TzQtMirror(box, widget), shown(widget) {
    const boost::intrusive_ptr<UI_Checkbox> entered(&box);
    QObject::connect(shown, &QCheckBox::toggled, shown,
                     [entered](bool checked) { entered->EnterValue(checked ? 1 : 0); });
  }

  /// A box without a text of its own is read by the label of what it switches, the field behind it.
  [[nodiscard]] QString GetSpokenName() const {
    const UI_Node& box = GetNode();
    if (!box.GetName().IsEmpty() || box.GetParent() == nullptr) return ToShownText(box.GetName());
    bool isBehind = false;
    for (const UI_NodePtr& each : box.GetParent()->GetChildren()) {
      if (isBehind && !each->GetName().IsEmpty()) return ToShownText(each->GetName());
      isBehind = isBehind || each.get() == &box;
    }
    return {};
  }

  QCheckBox* shown;
};

class TextMirror : public TzQtMirror {
 public:
  TextMirror(UI_StaticText& text, QWidget* parent) : TextMirror(text, new QLabel(parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    shown->setText(ToShownText(GetNode().GetName()));
  }
  [[nodiscard]] QWidget* GetFocusWidget() const override { return nullptr; }

 private:
  TextMirror(UI_StaticText& text, QLabel* widget) : TzQtMirror(text, widget), shown(widget) {
    shown->setTextFormat(Qt::PlainText);
    if (text.GetPresentation().fontSize) {
      // What is set larger than the rest heads it.
      QFont font = shown->font();
      font.setBold(text.GetPresentation().bold.value_or(false));
      shown->setFont(font);
    }
  }

  QLabel* shown;
};

/// Draws its image in its own size, or smaller where it has less room.
class Picture : public QWidget {
 public:
  Picture(const QIcon& image, QWidget* parent) : QWidget(parent), icon(image) {}
  [[nodiscard]] QSize sizeHint() const override { return GetTzIconSize(icon); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    icon.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }

 private:
  QIcon icon;
};

class ImageMirror : public TzQtMirror {
 public:
  ImageMirror(UI_Image& image, QWidget* parent)
      : TzQtMirror(image, new Picture(MakeTzIcon(image.GetImage()), parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    GetWidget()->setAccessibleName(ToShownText(GetNode().GetName()));
  }
  [[nodiscard]] TzQtRoom Measure() const override {
    const QSize size = GetWidget()->sizeHint();
    return {size * 3 / 4, size};
  }
  [[nodiscard]] QWidget* GetFocusWidget() const override { return nullptr; }
};

class SeparatorMirror : public TzQtMirror {
 public:
  SeparatorMirror(UI_Node& node, QWidget* parent) : TzQtMirror(node, new QFrame(parent)) {
    static_cast<QFrame*>(GetWidget())->setFrameStyle(int{QFrame::HLine} | int{QFrame::Sunken});
  }
  [[nodiscard]] TzQtRoom Measure() const override {
    const int height = GetWidget()->sizeHint().height();
    return {{0, height}, {0, height}};
  }
  [[nodiscard]] QWidget* GetFocusWidget() const override { return nullptr; }
};

class GroupMirror : public TzQtMirror {
 public:
  GroupMirror(UI_Node& node, QWidget* parent) : GroupMirror(node, new QGroupBox(parent)) {}

  void Refresh() override {
    TzQtMirror::Refresh();
    shown->setTitle(ToPlainCaption(ToShownText(GetNode().GetName())));
  }
  [[nodiscard]] QWidget* GetFocusWidget() const override { return nullptr; }

 private:
  GroupMirror(UI_Node& node, QGroupBox* widget) : TzQtMirror(node, widget), shown(widget) {}

  QGroupBox* shown;
};

/// A place for what somebody else lays out, cut off at its own edge.
class SubViewMirror : public TzQtMirror {
 public:
  SubViewMirror(UI_Node& node, QWidget* parent) : TzQtMirror(node, new QWidget(parent)) {}

  [[nodiscard]] TzQtRoom Measure() const override {
    constexpr QSize kLeast(120, 80);
    return {kLeast, kLeast};
  }
  [[nodiscard]] QWidget* GetFocusWidget() const override { return nullptr; }
};

}  // namespace

std::unique_ptr<TzQtMirror> MakeTzControl(UI_Node& node, QWidget* parent) {
  switch (node.GetKind()) {
    case UI_NodeKind::Button:
      if (auto* pictured = dynamic_cast<UI_PictureButton*>(&node)) {
        return std::make_unique<PictureButtonMirror>(*pictured, parent);
      }
      return std::make_unique<ButtonMirror>(static_cast<UI_Button&>(node), parent);
    case UI_NodeKind::Checkbox:
      return std::make_unique<CheckboxMirror>(static_cast<UI_Checkbox&>(node), parent);
    case UI_NodeKind::StaticText:
      return std::make_unique<TextMirror>(static_cast<UI_StaticText&>(node), parent);
    case UI_NodeKind::Image:
      return std::make_unique<ImageMirror>(static_cast<UI_Image&>(node), parent);
    case UI_NodeKind::Separator:
      return std::make_unique<SeparatorMirror>(node, parent);
    case UI_NodeKind::Group:
      return std::make_unique<GroupMirror>(node, parent);
    case UI_NodeKind::SubView:
      return std::make_unique<SubViewMirror>(node, parent);
    default:
      return nullptr;
  }
}
