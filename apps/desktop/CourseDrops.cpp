// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/CourseDrops.h"

#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "apps/author/TreeGlance.h"
#include "apps/desktop/PanelGlance.h"
#include "host/kelpui/UI_Button.h"
#include "host/qt/TzQtText.h"
#include "host/qt/TzQtTreeModel.h"

using kelpui::controls::UI_Button;
using kelpui::controls::UI_RowPtr;

namespace {

/// None unless all are files of this machine.
std::vector<TzPath> ListFiles(const QMimeData& data) {
  std::vector<TzPath> files;
  for (const QUrl& url : data.urls()) {
    if (!url.isLocalFile()) return {};
    files.push_back(TzPath::FromNative(QFile::encodeName(url.toLocalFile()).toStdString()));
  }
  return files;
}

bool IsCourseFile(const std::vector<TzPath>& files) {
  if (files.size() != 1) return false;
  const QString name = ToQtText(files.front().GetFileName()).toLower();
  const QStringList suffixes{".plexo", ".yaml", ".yml"};
  return std::ranges::any_of(suffixes, [&](const QString& suffix) { return name.endsWith(suffix); });
}

struct Place {
  UI_RowPtr header;
  UI_RowPtr names;
  bool takesMany = false;
};

/// The place of its module that the row belongs to; nothing for a module's own row.
std::optional<Place> FindPlace(const CourseSources::Row& row) {
  const CourseSources::Row* module = row.GetParentRow();
  if (module == nullptr) return std::nullopt;
  for (const CoursePlace place : {CoursePlace::PreTest, CoursePlace::Content, CoursePlace::PostTest}) {
    const UI_RowPtr header = CourseSources::GetHeader(*module, place);
    const UI_RowPtr names = CourseSources::GetNames(*module, place);
    if (&row == header.get() || &row == names.get())
      return Place{header, names, place == CoursePlace::Content};
  }
  return std::nullopt;
}

}  // namespace

CourseDrops::CourseDrops(DesktopWindow& programWindow, DesktopSession& programSession,
                         OpenCourse openCourseFile)
    : window(programWindow), session(programSession), openCourse(std::move(openCourseFile)) {
  // Text fields would take the names of files for text.
  QCoreApplication::instance()->installEventFilter(this);
}

bool CourseDrops::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  const bool isDrag = type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != &window) return QObject::eventFilter(watched, event);
  if (type == QEvent::DragLeave) Mark(std::nullopt);
  if (isDrag && Drag(static_cast<QDropEvent&>(*event), *widget)) return true;
  return QObject::eventFilter(watched, event);
}

bool CourseDrops::Drag(QDropEvent& event, const QWidget& widget) {
  if (event.mimeData() == nullptr || !event.mimeData()->hasUrls()) return false;
  const std::vector<TzPath> files = ListFiles(*event.mimeData());
  std::optional<Target> target;
  if (!session.IsBusy()) {
    target =
        IsCourseFile(files) ? GetCourseTarget() : FindTarget(widget.mapToGlobal(event.position().toPoint()));
  }
  if (target && (files.empty() || (files.size() > 1 && !target->takesMany))) target.reset();
  const bool isDrop = event.type() == QEvent::Drop;
  Mark(isDrop ? std::nullopt : target);
  // Accepting a drag everywhere keeps its moves coming; the action says whether it can be dropped here.
  event.setDropAction(target ? Qt::CopyAction : Qt::IgnoreAction);
  event.setAccepted(target.has_value() || event.type() == QEvent::DragEnter);
  if (!isDrop || !target) return true;
  // Whoever drags waits for this event's end, and the component may ask the author.
  QTimer::singleShot(0, this, [this, target = *target, files] { Drop(target, files); });
  return true;
}

CourseDrops::Target CourseDrops::GetCourseTarget() const {
  QWidget* content = window.centralWidget();
  return {.area = content->rect(), .shownOn = content, .opensCourse = true};
}

std::optional<CourseDrops::Target> CourseDrops::FindTarget(const QPoint& screenPlace) const {
  if (FindFlatList(session.GetScreen()) != nullptr) return FindListTarget(screenPlace);
  return FindRowTarget(screenPlace);
}

std::optional<CourseDrops::Target> CourseDrops::FindListTarget(const QPoint& screenPlace) const {
  QWidget* dock = session.GetWindows().FindWidget(session.GetScreen().GetPanel()->GetSpec().parent);
  if (dock == nullptr) return std::nullopt;
  const QRect area = GetPlaceOnCanvas(*FindFlatList(session.GetScreen()));
  if (!area.contains(dock->mapFromGlobal(screenPlace))) return std::nullopt;
  return Target{.area = area, .shownOn = dock};
}

std::optional<CourseDrops::Target> CourseDrops::FindRowTarget(const QPoint& screenPlace) const {
  for (QTreeView* view : window.findChildren<QTreeView*>()) {
    const auto* model = dynamic_cast<const TzQtTreeModel*>(view->model());
    const QPoint place = view->viewport()->mapFromGlobal(screenPlace);
    if (model == nullptr || !view->isVisible() || !view->viewport()->rect().contains(place)) continue;
    const UI_RowPtr row = model->GetRow(view->indexAt(place));
    const auto found = row != nullptr ? FindPlace(*row) : std::nullopt;
    if (!found) continue;
    const QRect header = view->visualRect(model->GetIndex(*found->header));
    const QRect names = view->visualRect(model->GetIndex(*found->names));
    return Target{found->header, header.united(names), view->viewport(), found->takesMany};
  }
  return std::nullopt;
}

void CourseDrops::Mark(const std::optional<Target>& target) {
  if (mark != nullptr && (!target || mark->parentWidget() != target->shownOn)) delete mark.data();
  if (!target) return;
  if (mark == nullptr) mark = new QRubberBand(QRubberBand::Rectangle, target->shownOn);
  mark->setGeometry(target->area);
  mark->show();
}

void CourseDrops::Drop(const Target& target, const std::vector<TzPath>& files) {
  if (target.opensCourse) return openCourse(QFile::decodeName(files.front().GetNative().c_str()));
  DesktopUserInterface& ui = session.GetUserInterface();
  ui.HandToChooser(files);
  if (target.header == nullptr) {
    session.GetScreen().Press("add_file");
  } else if (target.header->GetTree() != nullptr) {
    TreeGlance glance(*target.header->GetTree());
    if (auto* button = glance.Find<UI_Button>(*target.header)) button->Press();
  }
  const DesktopUserInterface::Handed handed = ui.TakeHanded();
  if (handed.isAsked && !handed.refused.empty()) ShowRefused(handed.refused);
}

void CourseDrops::ShowRefused(const std::vector<TzPath>& files) {
  const TzStringDictionary& words = session.GetDictionary();
  TzString text = words.GetString("kPlexoErrorInvalidSCORM") + "\n";
  for (const TzPath& file : files) text += "\n" + file.GetFileName();
  TzMessageBoxOptions options(words.GetString("kPlexoError"), text);
  options.SetToUseDictionary(false);
  session.GetUserInterface().ShowMessageBox(options, TzMessageBoxKind::Ok);
}
