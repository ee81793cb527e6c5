// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtCanvas.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QEventLoop>
#include <QGroupBox>
#include <QMenuBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "host/kelpui/UI_Button.h"
#include "host/qt/TzQtMnemonics.h"
#include "host/qt/TzQtText.h"
#include "host/qt/TzQtTree.h"
#include "host/sheets/TzDialog.h"

using kelpui::controls::UI_Button;
using kelpui::controls::UI_Change;
using kelpui::controls::UI_KeepAlive;
using kelpui::controls::UI_Node;
using kelpui::controls::UI_NodeKind;
using kelpui::controls::UI_NodePtr;

/// The widget of a canvas.
class TzQtCanvas::Surface : public QWidget {
 public:
  Surface(TzQtCanvas& shownCanvas, QWidget* parent) : QWidget(parent), canvas(&shownCanvas) {}

  void Forget() { canvas = nullptr; }
  [[nodiscard]] QSize sizeHint() const override {
    return canvas != nullptr ? canvas->Measure().preferred : QSize();
  }
  [[nodiscard]] QSize minimumSizeHint() const override {
    return canvas != nullptr ? canvas->Measure().minimum : QSize();
  }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override {
    if (canvas != nullptr) canvas->SizeChanged();
  }

  void changeEvent(QEvent* event) override {
    const bool isLook = event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
                        event->type() == QEvent::LayoutDirectionChange;
    if (isLook && canvas != nullptr) canvas->LayOut();
    QWidget::changeEvent(event);
  }

 private:
  TzQtCanvas* canvas;
};

/// The window of a dialog's canvas: whatever would close it is the canvas's to decide.
class TzQtCanvas::Dialog : public QDialog {
 public:
  Dialog(TzQtCanvas& shownCanvas, QWidget* parent)
      : QDialog(parent), canvas(&shownCanvas), area(new QScrollArea(this)) {
    setWindowTitle(ToQtText(canvas->GetSpec().title));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(area);
  }

  void SetContent(QWidget* content) { area->setWidget(content); }

  /// As large as that, or as the screen allows.
  void TakeRoom(const TzQtRoom& room, const QSize& screen) {
    // There is a title above it, and where one direction scrolls the other has the bar beside it.
    const QSize most = screen - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const QSize beside(room.minimum.height() > most.height() ? bar : 0,
                       room.minimum.width() > most.width() ? bar : 0);
    setMinimumSize((room.minimum + beside).boundedTo(most));
    resize((room.preferred + beside).boundedTo(most));
  }

  void Forget() { canvas = nullptr; }
  void reject() override {
    if (canvas == nullptr) return;
    const TzCanvasPtr held(canvas);
    if (!canvas->PressCancel()) canvas->EndModal(kTzDialogCancel);
  }

 private:
  TzQtCanvas* canvas;
  QScrollArea* area;
};

TzQtCanvas::TzQtCanvas(const TzCanvasSpec& canvasSpec, QWidget* parent, Gone goneNotification,
                       std::shared_ptr<const TzQtTooltipKeys> tooltipKeys)
    : TzCanvas(canvasSpec), gone(std::move(goneNotification)), mirrors(std::move(tooltipKeys)) {
  if (canvasSpec.place != TzCanvasSpec::Place::Dialog) {
    surface = new Surface(*this, parent);
    return;
  }
  dialog = new Dialog(*this, parent);
  surface = new Surface(*this, dialog);
  dialog->SetContent(surface);
}

TzQtCanvas::~TzQtCanvas() {
  if (gone) gone(*this);
  Forget();
}

void TzQtCanvas::Forget() {
  gone = nullptr;
  if (surface == nullptr) return;
  surface->Forget();
  if (dialog != nullptr) dialog->Forget();
  QWidget* window = dialog != nullptr ? static_cast<QWidget*>(dialog.data()) : surface.data();
  window->hide();
  // Not from under an event of its own.
  window->setParent(nullptr);
  window->deleteLater();
  surface = nullptr;
  dialog = nullptr;
}

QWidget* TzQtCanvas::GetWidget() const { return surface; }

TzQtRoom TzQtCanvas::Measure() {
  if (surface == nullptr) return {};
  return TzQtLayout(*this, surface->layoutDirection()).Measure(*this);
}

void TzQtCanvas::DescendantChanged(UI_Node& node, UI_Change change) {
  if (surface == nullptr) return;
  const UI_KeepAlive held(*this);
  Redraw(node, change);
  // Inside a sub-view its owner has the say.
  const UI_Node* parent = node.GetParent();
  while (parent != nullptr && parent->GetKind() != UI_NodeKind::SubView) parent = parent->GetParent();
  const bool isOwners = parent != nullptr;
  if (!isOwners && (change == UI_Change::Children || change == UI_Change::State)) LayOut();
}

void TzQtCanvas::Redraw(UI_Node& node, UI_Change change) {
  for (const UI_Node* above = &node; above != nullptr; above = above->GetParent()) {
    if (above->GetKind() != UI_NodeKind::Tree) continue;
    if (auto* tree = dynamic_cast<TzQtTree*>(mirrors.Find(*above))) tree->NodeChanged(node, change);
    if (above != &node) return;
  }
  TzQtMirror* mirror = mirrors.Find(node);
  switch (change) {
    case UI_Change::Children:
      ShowStructure();
      break;
    case UI_Change::State:
      if (mirror != nullptr) mirror->Refresh();
      break;
    case UI_Change::Frame:
      PlaceMirror(node);
      break;
    case UI_Change::Rows:
    case UI_Change::Redraw:
      if (mirror != nullptr) mirror->GetWidget()->update();
      break;
  }
}

void TzQtCanvas::ShowStructure() {
  mirrors.DropStrays(*this);
  mirrors.MakeBelow(*this, *surface);
  for (const auto& [node, mirror] : mirrors.GetAll()) PlaceMirror(*node);
  ShowTabOrder();
}

void TzQtCanvas::LayOut() {
  if (surface == nullptr) return;
  isLayOutAsked = true;
  if (isLayingOut) return;
  const QScopedValueRollback<bool> laying(isLayingOut, true);
  // Who hears of a size may change what is laid out, and so its size; nobody does so for ever.
  constexpr int kMostTurns = 8;
  for (int turn = 0; turn < kMostTurns && std::exchange(isLayOutAsked, false); ++turn) {
    ShowVisibility();
    TzQtLayout layout(*this, surface->layoutDirection());
    layout.Measure(*this);
    const QSize size(static_cast<int>(GetWidth()), static_cast<int>(GetHeight()));
    if (dialog == nullptr) surface->resize(size);
    layout.Place(*this, size);
    // A label's width changes the field beside it in the same frame.
    for (const auto& [node, mirror] : mirrors.GetAll()) PlaceMirror(*node);
  }
  ShowMnemonics();
  ShowDefaultButton();
  surface->updateGeometry();
}

void TzQtCanvas::SizeChanged() {
  const QSize size = surface->size();
  if (size.width() == static_cast<int>(GetWidth()) && size.height() == static_cast<int>(GetHeight())) return;
  SetSize({0.0, 0.0, TzReal(size.width()), TzReal(size.height())});
}

void TzQtCanvas::PlaceMirror(const UI_Node& node) {
  TzQtMirror* mirror = mirrors.Find(node);
  const UI_Node* parent = node.GetParent();
  if (mirror == nullptr || mirror->GetWidget() == nullptr || parent == nullptr) return;
  TzReal left = node.GetFrame().left;
  TzReal top = node.GetFrame().top;
  for (; parent != nullptr && parent != this && mirrors.Find(*parent) == nullptr;
       parent = parent->GetParent()) {
    left += parent->GetFrame().left;
    top += parent->GetFrame().top;
  }
  mirror->Place({static_cast<int>(left), static_cast<int>(top), static_cast<int>(node.GetWidth()),
                 static_cast<int>(node.GetHeight())});
}

namespace {

// By the order of the nodes, which is the order of reading.
void ListBelow(const UI_Node& node, const TzQtMirrors& mirrors,  // NOLINT(misc-no-recursion)
               std::vector<TzQtMirror*>& list) {
  for (const UI_NodePtr& child : node.GetChildren()) {
    if (TzQtMirror* mirror = mirrors.Find(*child)) list.push_back(mirror);
    ListBelow(*child, mirrors, list);
  }
}

}  // namespace

std::vector<TzQtMirror*> TzQtCanvas::ListMirrors() const {
  std::vector<TzQtMirror*> list;
  ListBelow(*this, mirrors, list);
  return list;
}

void TzQtCanvas::ShowVisibility() {
  for (TzQtMirror* mirror : ListMirrors()) {
    const bool isShown = mirror->GetNode().IsShown();
    if (mirror->GetWidget()->isHidden() == isShown) mirror->GetWidget()->setVisible(isShown);
  }
}

void TzQtCanvas::ShowMnemonics() {
  std::vector<TzQtMirror*> captioned;
  std::vector<QString> captions;
  for (TzQtMirror* mirror : ListMirrors()) {
    const QString caption = mirror->GetNode().IsShown() ? mirror->GetCaption() : QString();
    if (caption.isEmpty()) continue;
    captioned.push_back(mirror);
    captions.push_back(caption);
  }
  // The bar's buttons, seen from the panel, and the other way round; the menus, seen from both.
  QSet<QChar> taken;
  for (const QAbstractButton* button : surface->window()->findChildren<QAbstractButton*>()) {
    if (!surface->isAncestorOf(button) && !button->isHidden()) taken.insert(GetTzMnemonic(button->text()));
  }
  for (const QMenuBar* menus : surface->window()->findChildren<QMenuBar*>()) {
    for (const QAction* menu : menus->actions()) taken.insert(GetTzMnemonic(menu->text()));
  }
  const std::vector<qsizetype> places = ChooseTzMnemonics(captions, taken);
  for (std::size_t index = 0; index < captioned.size(); ++index) captioned[index]->SetMnemonic(places[index]);
}

void TzQtCanvas::ShowDefaultButton() {
  if (dialog == nullptr) return;
  bool isFound = false;
  for (TzQtMirror* mirror : ListMirrors()) {
    auto* button = qobject_cast<QPushButton*>(mirror->GetWidget());
    if (button == nullptr) continue;
    const UI_Node& node = mirror->GetNode();
    const bool isDialogs = !node.GetPresentation().buttonTheme.IsEmpty();
    const bool isDefault =
        !isFound && isDialogs && node.IsShown() && !static_cast<const UI_Button&>(node).IsCancel();
    isFound = isFound || isDefault;
    if (button->isDefault() != isDefault) button->setDefault(isDefault);
  }
}

void TzQtCanvas::ShowTabOrder() {
  QWidget* before = nullptr;
  for (TzQtMirror* mirror : ListMirrors()) {
    const auto* tree = dynamic_cast<TzQtTree*>(mirror);
    const std::vector<QWidget*> widgets =
        tree != nullptr ? tree->GetFocusWidgets() : std::vector<QWidget*>{mirror->GetFocusWidget()};
    for (QWidget* widget : widgets) {
      if (widget == nullptr || widget->focusPolicy() == Qt::NoFocus) continue;
      if (before != nullptr) QWidget::setTabOrder(before, widget);
      before = widget;
    }
  }
}

bool TzQtCanvas::PressCancel() {
  for (TzQtMirror* mirror : ListMirrors()) {
    UI_Node& node = mirror->GetNode();
    if (node.GetKind() != UI_NodeKind::Button || !node.IsShown() || !node.IsEnabled()) continue;
    auto& button = static_cast<UI_Button&>(node);
    if (!button.IsCancel()) continue;
    const UI_NodePtr pressed(&node);
    button.Press();
    return true;
  }
  return false;
}

void TzQtCanvas::FocusFirst() {
  for (TzQtMirror* mirror : ListMirrors()) {
    QWidget* widget = mirror->GetFocusWidget();
    if (widget == nullptr || !widget->isVisible() || !widget->isEnabled()) continue;
    if ((widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    widget->setFocus(Qt::TabFocusReason);
    return;
  }
}

void TzQtCanvas::RunEventLoop() {
  if (dialog == nullptr) {
    EndModal(kTzDialogCancel);
    return;
  }
  const TzQtRoom room = Measure();
  const QPointer<QWidget> owner =
      dialog->parentWidget() != nullptr ? dialog->parentWidget()->window() : nullptr;
  dialog->setWindowModality(owner != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
  const QRect screen = dialog->screen()->availableGeometry();
  dialog->TakeRoom(room, screen.size());
  if (owner != nullptr) {
    QRect place(QPoint(), dialog->size());
    place.moveCenter(owner->geometry().center());
    place.moveLeft(
        std::clamp(place.left(), screen.left(), std::max(screen.left(), screen.right() - place.width())));
    place.moveTop(
        std::clamp(place.top(), screen.top(), std::max(screen.top(), screen.bottom() - place.height())));
    dialog->move(place.topLeft());
  }
  dialog->show();
  dialog->activateWindow();
  FocusFirst();
  QEventLoop loop;
  while (IsModalRunning() && dialog != nullptr) loop.processEvents(QEventLoop::WaitForMoreEvents);
  // A window that went under its dialog is no answer.
  if (IsModalRunning()) EndModal(kTzDialogCancel);
  if (dialog != nullptr) dialog->hide();
  // A window manager that was about to give the focus back to the dialog, after a box, leaves it nowhere.
  if (owner != nullptr && owner->isVisible()) owner->activateWindow();
}

TzQtRoom TzQtCanvas::MeasureNode(const UI_Node& node) const {
  const TzQtMirror* mirror = mirrors.Find(node);
  if (mirror == nullptr || mirror->GetWidget() == nullptr) return {};
  TzQtRoom room = mirror->Measure();
  // The buttons that answer a dialog are of one size.
  if (node.GetKind() == UI_NodeKind::Button && !node.GetPresentation().buttonTheme.IsEmpty()) {
    constexpr int kAnswerWidth = 88;
    room.preferred.setWidth(std::max(room.preferred.width(), kAnswerWidth));
  }
  return room;
}

QMargins TzQtCanvas::GetFrameMargins(const UI_Node& box) const {
  // A window's content keeps off its edges, unless its sheet says otherwise.
  if (box.GetKind() == UI_NodeKind::View && !box.GetPresentation().margin) {
    const int edge = surface->style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, surface);
    return {edge, edge, edge, edge};
  }
  const TzQtMirror* mirror = box.GetKind() == UI_NodeKind::Group ? mirrors.Find(box) : nullptr;
  if (mirror == nullptr) return {};
  constexpr int kPadding = 8;
  return mirror->GetWidget()->contentsMargins() + QMargins(kPadding, kPadding, kPadding, kPadding);
}

int TzQtCanvas::GetLabelWidth(const UI_Node& node) const {
  const TzQtMirror* mirror = mirrors.Find(node);
  return mirror != nullptr ? mirror->GetLabelWidth() : 0;
}

void TzQtCanvas::SetLabelWidth(const UI_Node& node, int width, int indent) {
  if (TzQtMirror* mirror = mirrors.Find(node)) mirror->SetLabelWidth(width, indent);
}

int TzQtCanvas::GetSpacing() const {
  return surface->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, surface);
}
