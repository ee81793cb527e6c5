// SPDX-License-Identifier: Apache-2.0
#include "intake/PlexoAddFileDriver.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "core/PlexoErrorBox.h"
#include "core/PlexoModuleCourseModel.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzZipUtils.h"
#include "host/session/TzFileChooser.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "intake/PlexoPdfWrapping.h"
#include "intake/PlexoSWFWrapping.h"
#include "intake/PlexoXMLParser.h"

namespace {

/// In the order of `PlexoSCOKind`.
constexpr const char* kKindFolders[] = {"Pre_Test", "Post_Test", "Content", "Linear"};

/// Shows the text of the key and returns 1, the result of a refusal.
int Refuse(const ITzStringDictionary& dictionary, const TzString& key) {
  ShowErrorBox(dictionary, key);
  return 1;
}

std::vector<TzPath> ChooseFiles(PlexoCourseModel& course, const ITzStringDictionary& dictionary,
                                bool multiple) {
  const auto type = course.GetAllowWrappedContent() ? kTzFileTypeSCOOrWrapped : kTzFileTypeSCO;
  std::vector<TzPath> files = TzFileChooserUtils::OpenOSDialogSelectFile(
      TzFileChooserUtils::GetFileFilterInfoForFileExtensions({type}),
      dictionary.GetString("kPlexoBrowseForScoDialogTitle"), course.GetLastBrowseFolder(), nullptr, multiple);
  if (!files.empty()) course.SetLastBrowseFolder(files.front().GetParentTzPath());
  return files;
}

/// Deletes the folder of a refused file's base name, whichever file made it: who chooses files sees to it
/// that no two in one place share a name. A file that can't have a folder deletes nothing.
void DeleteFolderOf(const TzPath& file, PlexoSCOKind kind, const TzString& moduleName) {
  const TzString baseName = TzFileUtil::GetBaseFileName(file);
  if (!PlexoAddFileDriver::CanNameFolder(baseName) || GetCourseModel()->GetWorkingFolder().IsEmpty()) return;
  const TzPath folder = PlexoAddFileDriver::GetSCOFolder(baseName, kind, moduleName);
  if (TzFile(folder).Exists()) TzFileUtil::DeleteDirectory(folder, true);
}

/// Runs every chosen file through the driver and hands each success to `place`.
std::vector<TzString> AddChosenFiles(const std::vector<TzPath>& files, PlexoSCOKind kind,
                                     const TzString& moduleName,
                                     const std::function<void(const PlexoSCOModel&)>& place) {
  std::vector<TzString> placed;
  // One record serves the whole run: a file that was added already places what it holds by then.
  PlexoSCOModel sco;
  for (const TzPath& file : files) {
    if (PlexoAddFileDriver::AddFileToCourse(file, sco, kind, moduleName) != 0) {
      DeleteFolderOf(file, kind, moduleName);
      break;
    }
    place(sco);
    placed.push_back(sco.scoName);
  }
  return placed;
}

int AddPackage(const TzPath& path, const TzPath& folder, PlexoSCOModel& sco,
               const ITzStringDictionary& dictionary) {
  PlexoCourseModel* course = GetCourseModel();
  if (TzFile(folder).Exists()) {
    Refuse(dictionary, "kPlexoErrorSCOFolderExists");
    return 0;
  }
  if (TzZipUtils::ExtractFiles(path, folder) != kTzSuccess) return Refuse(dictionary, "kPlexoErrorUnzip");
  const TzFile manifestFile(folder / "imsmanifest.xml");
  if (!manifestFile.Exists()) return Refuse(dictionary, "kPlexoErrorInvalidSCORM");

  PlexoSCOManifest manifest;
  manifest.scoName = sco.scoName = TzFileUtil::GetBaseFileName(path);
  manifest.folderPath = sco.folderPath = folder.GetString();
  manifest.sourcePath = sco.sourcePath = path.GetString();
  if (const int result = PlexoAddFileDriver::ReadSCOManifest(manifestFile, manifest); result != 0) {
    return result;
  }
  // A manifest that was given up before its root has no version, and is caught here.
  if (course->GetScormVersion() != manifest.scormVersion) {
    return Refuse(dictionary, "kPlexoErrorIncompatibleSCORMVersion");
  }
  // An objective that another SCO has too is accepted without a word: objectives of SCOs are kept apart by
  // the identifiers that the publisher gives.
  const int result = PlexoAddFileDriver::RemovePackageFiles(folder, course->GetScormVersion());
  course->AddSCOManifest(manifest);
  sco.manifest = std::move(manifest);
  return result;
}

/// What a course takes, by extension, and how it comes into the folder that is to be the SCO's.
struct FileType {
  const char* extension;
  bool isWrapped;
  int (*add)(const TzPath& path, const TzPath& scoFolder, PlexoSCOModel& sco,
             const ITzStringDictionary& dictionary);
};

constexpr FileType kFileTypes[] = {
    {"zip", false, AddPackage},
    {"swf", true, PlexoSWFWrapping::AddMovie},
    {"pdf", true, PlexoPdfWrapping::AddDocument},
};

/// Null for a file that the course doesn't take.
const FileType* FindFileType(const TzPath& path) {
  const TzString extension = TzFileUtil::GetExtension(path);
  const auto* const found =
      std::ranges::find_if(kFileTypes, [&](const FileType& type) { return extension == type.extension; });
  if (found == std::end(kFileTypes)) return nullptr;
  return !found->isWrapped || GetCourseModel()->GetAllowWrappedContent() ? found : nullptr;
}

}  // namespace

bool PlexoAddFileDriver::CanNameFolder(const TzString& baseName) {
  const std::u16string& units = baseName.GetUnits();
  return !units.empty() && units != u"." && units != u".." &&
         units.find_first_of(u"/\\") == std::u16string::npos;
}

TzPath PlexoAddFileDriver::GetSCOFolder(const TzString& baseName, PlexoSCOKind kind,
                                        const TzString& moduleName) {
  TzPath folder = GetCourseModel()->GetWorkingFolder();
  if (kind != PlexoSCOKind::LINEAR) folder.Append(moduleName);
  return folder / kKindFolders[static_cast<std::size_t>(kind)] / baseName;
}

std::vector<TzString> PlexoAddFileDriver::AddFilesToModule(const TzString& moduleName, PlexoSCOKind kind) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr) return {};
  PlexoModuleCourseModel* modules = GetModuleCourseModel();
  const bool multiple = kind == PlexoSCOKind::CONTENT;
  return AddChosenFiles(ChooseFiles(*GetCourseModel(), *dictionary, multiple), kind, moduleName,
                        [&](const PlexoSCOModel& sco) {
                          if (kind == PlexoSCOKind::PRE_TEST) modules->SetPreTest(moduleName, sco);
                          if (kind == PlexoSCOKind::POST_TEST) modules->SetPostTest(moduleName, sco);
                          if (kind == PlexoSCOKind::CONTENT) modules->AddContentSCO(moduleName, sco);
                        });
}

std::vector<TzString> PlexoAddFileDriver::AddFilesToLinearCourse(PlexoLinearCourseModel* linearCourse) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (linearCourse == nullptr || dictionary == nullptr) return {};
  return AddChosenFiles(ChooseFiles(*GetCourseModel(), *dictionary, true), PlexoSCOKind::LINEAR, {},
                        [&](const PlexoSCOModel& sco) { linearCourse->AddSCO(sco); });
}

int PlexoAddFileDriver::AddFileToCourse(const TzPath& path, PlexoSCOModel& sco, PlexoSCOKind kind,
                                        const TzString& moduleName) {
  if (moduleName.IsEmpty() && kind != PlexoSCOKind::LINEAR) return 1;
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr || !TzFile(path).Exists()) return 1;
  const FileType* type = FindFileType(path);
  const TzString baseName = TzFileUtil::GetBaseFileName(path);
  if (type == nullptr || !CanNameFolder(baseName)) return 1;
  if (GetCourseModel()->GetWorkingFolder().IsEmpty()) return 1;
  return type->add(path, GetSCOFolder(baseName, kind, moduleName), sco, *dictionary);
}

int PlexoAddFileDriver::ReadSCOManifest(const TzFile& manifestFile, PlexoSCOManifest& manifest) {
  const ITzStringDictionary* dictionary = GetStringDictionary();
  if (dictionary == nullptr || !manifestFile.Exists()) return 1;
  PlexoXMLParser parser(GetCourseModel()->GetScormVersion());
  parser.setSource(manifestFile);
  parser.parse();
  if (parser.HasFailed()) {
    const bool isVersion = parser.GetFailureCode() == PlexoParseFailure::VERSION;
    return Refuse(*dictionary,
                  isVersion ? "kPlexoErrorIncompatibleSCORMVersion" : "kPlexoErrorParseManifest");
  }
  parser.CopyManifestTo(manifest);
  return 0;
}

int PlexoAddFileDriver::RemovePackageFiles(const TzPath& scoFolder, const TzString& scormVersion) {
  const PlexoCourseModel* course = GetCourseModel();
  const bool is2004 = scormVersion == "2004";
  const std::size_t files =
      is2004 ? course->GetScorm2004SchemaFileCount() : course->GetScorm12SchemaFileCount();
  for (std::size_t index = 0; index < files; ++index) {
    TzFileUtil::DeleteFile(
        scoFolder / (is2004 ? course->GetScorm2004SchemaFile(index) : course->GetScorm12SchemaFile(index)));
  }
  TzFileUtil::DeleteFile(scoFolder / "imsmanifest.xml");
  if (!is2004) return 0;
  for (std::size_t index = 0; index < course->GetScorm2004SchemaFolderCount(); ++index) {
    TzFileUtil::DeleteDirectory(scoFolder / course->GetScorm2004SchemaFolder(index), true);
  }
  return 0;
}
