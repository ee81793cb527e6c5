// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QRubberBand>
#include <functional>
#include <optional>
#include <vector>

#include "apps/author/CourseSources.h"
#include "apps/desktop/DesktopSession.h"

class QDropEvent;

/// Takes files that are dragged from a file manager onto the list of a flat course, or onto the rows of a
/// module's pretest, content or post-test: as if the add button there had been pressed and the files chosen.
/// Where they would go is marked while they are dragged; elsewhere they aren't taken. A test takes one file.
/// A course file is opened, wherever in the window it is dropped.
class CourseDrops : public QObject {
 public:
  using OpenCourse = std::function<void(const QString& file)>;

  CourseDrops(DesktopWindow& programWindow, DesktopSession& programSession, OpenCourse openCourseFile);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Where files can go.
  struct Target {
    /// Null for the list of a flat course.
    CourseSources::RowPtr header = nullptr;
    /// In the widget that shows it.
    QRect area;
    QWidget* shownOn = nullptr;
    bool takesMany = true;
    bool opensCourse = false;
  };

  /// The whole window.
  [[nodiscard]] Target GetCourseTarget() const;
  [[nodiscard]] std::optional<Target> FindTarget(const QPoint& screenPlace) const;
  [[nodiscard]] std::optional<Target> FindListTarget(const QPoint& screenPlace) const;
  [[nodiscard]] std::optional<Target> FindRowTarget(const QPoint& screenPlace) const;
  /// True if the event was about files.
  bool Drag(QDropEvent& event, const QWidget& widget);
  void Drop(const Target& target, const std::vector<TzPath>& files);
  void Mark(const std::optional<Target>& target);
  void ShowRefused(const std::vector<TzPath>& files);

  DesktopWindow& window;
  DesktopSession& session;
  OpenCourse openCourse;
  QPointer<QRubberBand> mark;
};
