// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <functional>

/// The program's window: the container that the component's own window is put into. The component decides
/// whether it closes.
class DesktopWindow : public QMainWindow {
 public:
  DesktopWindow();

  void SetContent(QWidget* widget);
  /// The content's least size becomes the window's own.
  void TakeLeastSize();
  /// Null without one.
  [[nodiscard]] QWidget* GetContent() const { return content; }

  /// A line below the content; empty for none.
  void ShowHint(const QString& text);

  /// Called when the window is about to go, and everything is still there.
  void SetClosing(std::function<void()> notification) { closing = std::move(notification); }

  /// What stands in the title in front of the program's name; empty for nothing. The mark says that there is
  /// something to save.
  void ShowTitle(const QString& name, bool isMarked);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QPointer<QWidget> content;
  QLabel* hint;
  std::function<void()> closing;
};
