// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtWindows.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "host/qt/TzQtText.h"

namespace {

TzRect GetOwnRect(const QWidget& widget) {
  return {0.0, 0.0, TzReal(widget.width()), TzReal(widget.height())};
}

}  // namespace

class TzQtWindows::MainWindow : public QWidget {
 public:
  explicit MainWindow(TzQtWindows& allWindows)
      : windows(allWindows), bar(new QWidget(this)), line(new QFrame(this)), dock(new QWidget(this)) {
    auto* barLayout = new QHBoxLayout(bar);
    constexpr int kBarEdge = 3;
    barLayout->setContentsMargins(kBarEdge, kBarEdge, kBarEdge, kBarEdge);
    line->setFrameStyle(int{QFrame::HLine} | int{QFrame::Sunken});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(line);
    layout->addWidget(dock, 1);
    dock->installEventFilter(this);
  }

  [[nodiscard]] QWidget* GetBar() const { return bar; }
  [[nodiscard]] QWidget* GetDock() const { return dock; }

 protected:
  // The dock follows the window's size and the bar's.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == dock && event->type() == QEvent::Resize) windows.Resized();
    return QWidget::eventFilter(watched, event);
  }
  void moveEvent(QMoveEvent* /*event*/) override { windows.Moved(pos()); }
  void enterEvent(QEnterEvent* /*event*/) override {
    windows.windows.SendMessage(windows.mainWindow, kTzMessageSetCursor, 0, 0);
  }
  void closeEvent(QCloseEvent* event) override { event->setAccepted(windows.Close()); }

 private:
  TzQtWindows& windows;
  QWidget* bar;
  QFrame* line;
  QWidget* dock;
};

TzQtWindows::TzQtWindows() : containerWindow(windows.Create({})), dock(windows.Create({})) {}

TzQtWindows::~TzQtWindows() { delete mainWidget.data(); }

QWidget* TzQtWindows::GetMainWidget() const { return mainWidget; }

QWidget* TzQtWindows::GetBar() const { return mainWidget != nullptr ? mainWidget->GetBar() : nullptr; }

QWidget* TzQtWindows::FindWidget(TzWindowHandle window) const {
  if (mainWidget == nullptr || windows.Find(mainWindow) == nullptr) return nullptr;
  if (window == mainWindow) return mainWidget;
  return window == dock ? mainWidget->GetDock() : nullptr;
}

TzWindowHandle TzQtWindows::CreateTopLevelWindow(const TzWindowSpec& spec) {
  delete mainWidget.data();
  windows.Destroy(mainWindow);
  mainWindow = windows.Create(spec);
  windows.Find(dock)->parent = mainWindow;
  mainWidget = new MainWindow(*this);
  ShowTitle();
  mainWidget->resize(spec.width, spec.height);
  // A place that is the system's in one direction is so in both.
  if (spec.x != kTzDefaultPosition) mainWidget->move(spec.x, spec.y);
  return mainWindow;
}

void TzQtWindows::SetParent(TzWindowHandle window, TzWindowHandle parent) {
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->parent = parent;
}

void TzQtWindows::ShowWindow(TzWindowHandle window) {
  QWidget* widget = FindWidget(window);
  if (widget == nullptr) return;
  TzMinMaxInfo limits;
  windows.SendMessage(window, kTzMessageGetMinMaxInfo, 0, reinterpret_cast<TzLParam>(&limits));
  widget->setMinimumSize(limits.minTrackWidth, limits.minTrackHeight);
  windows.Find(window)->isVisible = true;
  widget->show();
}

void TzQtWindows::UpdateWindow(TzWindowHandle window) {
  if (QWidget* widget = FindWidget(window)) widget->repaint();
  windows.Validate(window);
}

TzRect TzQtWindows::GetClientRect(TzWindowHandle window) {
  QWidget* widget = FindWidget(window);
  if (widget == nullptr) return {};
  // Before the window shows, its parts have their sizes only when asked to.
  if (QLayout* layout = mainWidget->layout()) layout->activate();
  return GetOwnRect(*widget);
}

TzRect TzQtWindows::GetUpdateRect(TzWindowHandle window) {
  const TzWindowModel* model = windows.Find(window);
  return model != nullptr ? model->updateArea : TzRect{};
}

TzWindowProc TzQtWindows::GetWindowProc(TzWindowHandle window) {
  const TzWindowModel* model = windows.Find(window);
  return model != nullptr ? model->procedure : nullptr;
}

TzWindowProc TzQtWindows::SetWindowProc(TzWindowHandle window, TzWindowProc procedure) {
  TzWindowModel* model = windows.Find(window);
  return model != nullptr ? std::exchange(model->procedure, procedure) : nullptr;
}

TzMessageResult TzQtWindows::CallWindowProc(TzWindowProc procedure, TzWindowHandle window, unsigned message,
                                            TzWParam wparam, TzLParam lparam) {
  if (procedure == nullptr) return DefWindowProc(window, message, wparam, lparam);
  return procedure(window, message, wparam, lparam);
}

TzMessageResult TzQtWindows::DefWindowProc(TzWindowHandle window, unsigned message, TzWParam /*wparam*/,
                                           TzLParam /*lparam*/) {
  const TzMessageResult result = windows.CallDefaultProc(window, message);
  // The widget stays, hidden, as long as what is shown on it may still be told of.
  const bool isGone = window == mainWindow && windows.Find(window) == nullptr;
  if (isGone && !isClosing && mainWidget != nullptr) mainWidget->close();
  return result;
}

unsigned TzQtWindows::RegisterWindowMessage(const TzString& name) {
  const auto known = std::ranges::find(messageNames, name);
  const auto index = static_cast<unsigned>(known - messageNames.begin());
  if (known == messageNames.end()) messageNames.push_back(name);
  return kTzMessageFirstRegistered + index;
}

void TzQtWindows::SetProperty(TzWindowHandle window, const TzString& name, void* value) {
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->properties[name] = value;
}

void* TzQtWindows::GetProperty(TzWindowHandle window, const TzString& name) {
  const TzWindowModel* model = windows.Find(window);
  if (model == nullptr) return nullptr;
  const auto found = model->properties.find(name);
  return found != model->properties.end() ? found->second : nullptr;
}

void TzQtWindows::RemoveProperty(TzWindowHandle window, const TzString& name) {
  if (TzWindowModel* model = windows.Find(window); model != nullptr) model->properties.erase(name);
}

TzErrorCodeEnum TzQtWindows::StartRoost(const TzAppContainterCreatorInfo& info, int /*applicationType*/) {
  if (info.createAppBar != nullptr) info.createAppBar();
  releaseAppBar = info.releaseAppBar;
  return kTzSuccess;
}

TzErrorCodeEnum TzQtWindows::EndRoost(int /*flag*/) {
  if (auto* release = std::exchange(releaseAppBar, nullptr); release != nullptr) release();
  return kTzSuccess;
}

TzWindowHandle TzQtWindows::GetDocumentDock(TzWindowHandle window) {
  return windows.Find(window) != nullptr ? dock : nullptr;
}

void TzQtWindows::SetApplicationName(const TzString& name) {
  QGuiApplication::setApplicationDisplayName(ToQtText(name));
  ShowTitle();
}

void TzQtWindows::ShowTitle() {
  const TzWindowModel* model = windows.Find(mainWindow);
  if (mainWidget == nullptr || model == nullptr) return;
  const QString application = QGuiApplication::applicationDisplayName();
  mainWidget->setWindowTitle(application.isEmpty() ? ToQtText(model->spec.title) : application);
}

void TzQtWindows::Resized() {
  if (windows.Find(mainWindow) == nullptr || mainWidget == nullptr) return;
  windows.Resize(mainWindow, mainWidget->width(), mainWidget->height());
  // Qt draws it without being asked.
  windows.Validate(mainWindow);
}

void TzQtWindows::Moved(const QPoint& place) {
  if (windows.Find(mainWindow) != nullptr) windows.Move(mainWindow, place.x(), place.y());
}

bool TzQtWindows::Close() {
  if (windows.Find(mainWindow) == nullptr) return true;
  const QScopedValueRollback<bool> closing(isClosing, true);
  return windows.Close(mainWindow);
}
