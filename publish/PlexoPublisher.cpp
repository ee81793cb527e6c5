// SPDX-License-Identifier: Apache-2.0
#include "publish/PlexoPublisher.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <new>
#include <span>
#include <string>

#include "core/PlexoErrorBox.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/files/TzZipUtils.h"
#include "host/session/TzProblem.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"
#include "publish/PlexoLinearCourseWriter.h"
#include "publish/PlexoManifestSink.h"
#include "publish/PlexoModuleCourseWriter.h"
#include "publish/PlexoSchemaFiles.h"

namespace {

/// File creator and type of a file that belongs to no program: four question marks.
constexpr std::uint32_t kUnknownFileCode = 0x3F3F3F3F;
constexpr int kTextWriteMode = 10;

/// Takes the folders of SCOs that are kept out of the package from the list.
void DropExcludedFolders(const PlexoCourseModel& course, std::vector<TzPath>& entries) {
  for (std::size_t index = 0; index < course.GetSCOManifestCount(); ++index) {
    const PlexoSCOManifest manifest = course.GetSCOManifest(index);
    if (!manifest.keepFolderEntry) {
      std::erase_if(entries, [&](const TzPath& entry) { return entry.GetString() == manifest.folderPath; });
    }
  }
}

/// Writes the text as UTF-8, a piece at a time: the text of a large course's manifest is large enough once.
TzErrorCodeEnum WriteText(TzWriteStream& stream, const TzString& text) {
  constexpr std::size_t kPiece = 65536;
  for (std::size_t start = 0; start < text.Length();) {
    std::size_t count = std::min(kPiece, text.Length() - start);
    const char16_t last = text.At(start + count - 1);
    const bool splitsPair = last >= 0xD800 && last < 0xDC00 && start + count < text.Length();
    if (splitsPair) ++count;
    const std::string utf8 = text.Substring(start, count).GetUTF8String();
    if (const auto code = stream.Write(std::as_bytes(std::span(utf8))); code != kTzSuccess) return code;
    start += count;
  }
  return stream.Close();
}

}  // namespace

PlexoPublisher* PlexoPublisher::GetPublisher() {
  static auto* const publisher = new (std::nothrow) PlexoPublisher;
  return publisher;
}

int PlexoPublisher::PublishPackage() {
  const std::uint64_t noSpaceBefore = TzFileUtil::GetNoSpaceCount();
  if (const int result = WriteManifest(); result != 0) return result;
  const ITzStringDictionary* dictionary = GetStringDictionary();
  PlexoCourseModel* course = GetCourseModel();
  if (dictionary == nullptr || course == nullptr) return 1;
  // A package without some schema documents still works in most LMSs, so this doesn't stop it.
  if (CopySchemaFiles(*course) != 0) ShowErrorBox(*dictionary, "kPlexoErrorCopyingXSDs");

  // Files that the disk had no room for would be missing in the package: the earlier one is better than that.
  if (TzFileUtil::GetNoSpaceCount() != noSpaceBefore) {
    ShowErrorBox(*dictionary, "kPlexoErrorZipping");
    return kTzMachineFailure;
  }

  const TzPath workingFolder = course->GetWorkingFolder();
  std::vector<TzPath> entries;
  if (TzFileUtil::GetFileNamesInFolderAtPath(workingFolder, entries, true, true) != 0) return 1;
  DropExcludedFolders(*course, entries);
  const TzPath target = course->GetPublishFolder() / course->GetPackageName();
  const TzErrorCodeEnum result = TzZipUtils::ZipFiles(entries, target, workingFolder, 1, {});
  if (result == kTzSuccess) {
    course->SetIsDirty(false);
  } else {
    ShowErrorBox(*dictionary, "kPlexoErrorZipping");
  }
  return result;
}

int PlexoPublisher::WriteManifest() {
  const PlexoCourseModel* course = GetCourseModel();
  // Without a working folder, relative paths would lead to wherever the host happens to stand.
  if (course == nullptr || course->GetWorkingFolder().IsEmpty()) return 1;
  PlexoManifestSink sink;
  {
    // The tree is as large as the text: it goes before the text is worked on.
    PlexoManifestWriter manifest(*course);
    const PlexoCourseType type = course->GetCourseType();
    const int result =
        type == PlexoCourseType::LINEAR ? WriteLinearCourse(manifest) : WriteModuleCourse(manifest, type);
    if (result != 0) return result;
    manifest.GetTree().Serialize(sink);
  }
  return WriteManifestFile(*course, sink.GetText());
}

int PlexoPublisher::WriteManifestFile(const PlexoCourseModel& course, TzString& text) {
  const TzFile file(course.GetWorkingFolder() / "imsmanifest.xml");
  const auto stream =
      TzStreamUtil::CreateFileStreamWrite(file, kTextWriteMode, kUnknownFileCode, kUnknownFileCode);
  if (stream == nullptr) return 1;
  // The replacement is blind: a title that holds the placeholder has it renamed too.
  text.ReplaceAll("hack:", "xmlns");
  if (WriteText(*stream, text) == kTzSuccess) return 0;
  TzReportSystemProblem(errno, file.GetPath().GetNative(), "can't write");
  return 1;
}
