// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopWindow.h"

#include <QCloseEvent>
#include <QIcon>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

DesktopWindow::DesktopWindow() : hint(new QLabel) {
  constexpr QSize kFirstSize(900, 660);
  constexpr int kHintMargin = 10;
  auto* column = new QWidget(this);
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(hint);
  setCentralWidget(column);
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  hint->setMargin(kHintMargin);
  hint->hide();
  const QSize title(0, style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
  resize(kFirstSize.boundedTo(screen()->availableSize() - title));
  setAcceptDrops(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  setWindowIcon(QIcon::fromTheme(QStringLiteral("plexo")));
}

void DesktopWindow::SetContent(QWidget* widget) {
  content = widget;
  static_cast<QVBoxLayout*>(centralWidget()->layout())->insertWidget(0, widget, 1);
}

void DesktopWindow::TakeLeastSize() {
  if (content == nullptr) return;
  setMinimumSize(content->minimumSize());
  content->setMinimumSize(0, 0);
}

void DesktopWindow::ShowHint(const QString& text) {
  if (hint->text() != text) hint->setText(text);
  if (hint->isHidden() != text.isEmpty()) hint->setVisible(!text.isEmpty());
}

void DesktopWindow::ShowTitle(const QString& name, bool isMarked) {
  setWindowTitle(name.isEmpty() ? QString() : name + QStringLiteral("[*]"));
  setWindowModified(isMarked && !name.isEmpty());
}

void DesktopWindow::closeEvent(QCloseEvent* event) {
  const bool mayClose = content == nullptr || content->close();
  if (mayClose && closing) closing();
  event->setAccepted(mayClose);
}
