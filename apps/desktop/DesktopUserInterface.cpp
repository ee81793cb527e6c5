// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/DesktopUserInterface.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/qt/TzQtText.h"
#include "host/session/TzSession.h"
#include "host/sheets/TzDataModel.h"
#include "host/text/ITzStringDictionary.h"

namespace {

using Folder = DesktopSettings::Folder;

constexpr const char* kPublishFolder = "publishFolder";
constexpr const char* kPublishFileName = "publishFileName";

TzString GetWord(const char* key) {
  const ITzStringDictionary* words = GetStringDictionary();
  return words != nullptr ? words->GetString(key) : TzString(key);
}

QString ToQtPath(const TzPath& path) { return QFile::decodeName(path.GetNative().c_str()); }

bool IsFolder(const TzPath& path) { return QFileInfo(ToQtPath(path)).isDir(); }

bool IsOffered(const TzPath& file, const TzFileChooserRequest& request) {
  const TzString extension = TzFileUtil::GetExtension(file);
  return std::ranges::any_of(request.filters, [&](const TzFileFilter& filter) {
    return std::ranges::find(filter.extensions, extension) != filter.extensions.end();
  });
}

}  // namespace

DesktopUserInterface::DesktopUserInterface(TzQtWindows& windowSystem, DesktopSettings& programSettings,
                                           DesktopProblems& problemList)
    : TzQtUserInterface(windowSystem), settings(programSettings), problems(problemList) {
  SetTooltipKeys({{"move_up", "kPlexoUIMoveSelectionUpToolTip"},
                  {"move_down", "kPlexoUIMoveSelectionDownToolTip"},
                  {"delete", "kPlexoUIDeleteSelectionToolTip"},
                  {"course_title", "kTzPlexoEditCrsTitle"},
                  {"linear_course_view", "kPlexoUITemplate1ShortDesc"},
                  {"content_post_course_view", "kPlexoUITemplate2ShortDesc"},
                  {"pre_content_post_course_view", "kPlexoUITemplate3ShortDesc"}});
  SetIconKeys({{"kPlexoError", QMessageBox::Critical}, {"kPlexoWarning", QMessageBox::Warning}});
}

void DesktopUserInterface::HandToChooser(std::vector<TzPath> files) {
  handed = {};
  waiting = std::move(files);
}

DesktopUserInterface::Handed DesktopUserInterface::TakeHanded() {
  waiting.reset();
  return std::exchange(handed, {});
}

int DesktopUserInterface::ShowMessageBox(const TzMessageBoxOptions& options, TzMessageBoxKind kind) {
  const bool isCancelled = problems.IsCancelled();
  const QString reason = problems.Take();
  if (kind != TzMessageBoxKind::Ok) return TzQtUserInterface::ShowMessageBox(options, kind);
  const bool isPublished = options.GetText() == GetWord("kPlexoPublishSuccess");
  if (isPublished && FindPublishCells() != nullptr) return ShowPublished(options);
  if (isCancelled) return kTzButtonOk;
  if (reason.isEmpty()) return TzQtUserInterface::ShowMessageBox(options, kind);
  TzMessageBoxOptions withReason(options.GetTitle(), options.GetText() + "\n\n" + FromQtText(reason),
                                 options.GetOwner());
  withReason.SetToUseDictionary(false);
  return TzQtUserInterface::ShowMessageBox(withReason, kind);
}

// The component's words, for it was the one to publish; where the package is, the program adds.
int DesktopUserInterface::ShowPublished(const TzMessageBoxOptions& options) {
  const TzDataModel& cells = *FindPublishCells();
  const TzPath folder(cells.GetCellValue(kPublishFolder).GetString());
  TzString name = cells.GetCellValue(kPublishFileName).GetString();
  if (TzFileUtil::GetExtensionAsWritten(TzPath(name)) != "zip") name.AppendUTF8(".zip");
  settings.SetFolder(Folder::Packages, ToQtPath(folder));

  QMessageBox box(FindFrontWindow(options.GetOwner()));
  box.setIcon(QMessageBox::Information);
  box.setWindowTitle(ToQtText(GetWord("kDesktopPackageCreated")));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQtText(options.GetText()));
  box.setInformativeText(ToQtPath(folder / name));
  box.addButton(QMessageBox::Ok)->setText(ToQtText(GetWord("kTzOk")));
  const auto* show = box.addButton(ToQtText(GetWord("kDesktopShowInFolder")), QMessageBox::ActionRole);
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Ok);
  box.exec();
  if (box.clickedButton() == show) QDesktopServices::openUrl(QUrl::fromLocalFile(ToQtPath(folder)));
  return kTzButtonOk;
}

std::vector<TzPath> DesktopUserInterface::ChooseFiles(const TzFileChooserRequest& request) {
  if (waiting) return TakeHandedFor(request);
  TzFileChooserRequest asked = request;
  const QString last = settings.GetFolder(Folder::Files);
  if (!last.isEmpty() && !IsFolder(request.startFolder)) {
    asked.startFolder = TzPath::FromNative(QFile::encodeName(last).toStdString());
  }
  std::vector<TzPath> files = TzQtUserInterface::ChooseFiles(asked);
  if (!files.empty()) settings.SetFolder(Folder::Files, ToQtPath(files.front().GetParentTzPath()));
  return files;
}

std::vector<TzPath> DesktopUserInterface::TakeHandedFor(const TzFileChooserRequest& request) {
  std::vector<TzPath> files = *std::exchange(waiting, std::nullopt);
  handed.isAsked = true;
  const auto refused = std::stable_partition(files.begin(), files.end(),
                                             [&](const TzPath& file) { return IsOffered(file, request); });
  handed.refused.assign(refused, files.end());
  files.erase(refused, files.end());
  return files;
}

TzString DesktopUserInterface::ChooseFolder(const TzFolderChooserRequest& request) {
  TzFolderChooserRequest asked = request;
  const QString last = settings.GetFolder(Folder::Packages);
  if (!last.isEmpty() && !IsFolder(TzPath(request.startFolder))) asked.startFolder = FromQtText(last);
  TzString folder = TzQtUserInterface::ChooseFolder(asked);
  if (!folder.IsEmpty()) settings.SetFolder(Folder::Packages, ToQtText(folder));
  return folder;
}

TzCanvasPtr DesktopUserInterface::CreateCanvas(const TzCanvasSpec& spec) {
  TzCanvasPtr canvas = TzQtUserInterface::CreateCanvas(spec);
  if (spec.place != TzCanvasSpec::Place::Dialog) return canvas;
  dialogs.push_back(canvas);
  // The dialog fills its cells before it takes events.
  QTimer::singleShot(0, &connections, [this] { PreparePublishDialog(); });
  return canvas;
}

void DesktopUserInterface::DialogClosed(TzCanvas& dialog, int /*result*/) {
  std::erase_if(dialogs, [&](const TzCanvasPtr& each) { return each.get() == &dialog; });
}

TzDataModel* DesktopUserInterface::FindPublishCells() const {
  for (const TzCanvasPtr& dialog : dialogs) {
    TzDataModel* cells = dialog->GetDataModel();
    if (cells != nullptr && cells->GetSheet().Find(kPublishFolder) != nullptr) return cells;
  }
  return nullptr;
}

void DesktopUserInterface::PreparePublishDialog() {
  TzDataModel* cells = FindPublishCells();
  const QString last = settings.GetFolder(Folder::Packages);
  if (cells == nullptr || last.isEmpty()) return;
  if (IsFolder(TzPath(cells->GetCellValue(kPublishFolder).GetString()))) return;
  cells->SetCellValue(kPublishFolder, FromQtText(last));
  cells->Update();
}
