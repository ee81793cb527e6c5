// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoCourseModel.h"

#include <new>
#include <span>

#include "core/PlexoInstallFolder.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzStreamUtil.h"
#include "host/session/TzSession.h"
#include "host/text/ITzStringDictionary.h"

namespace {

constexpr const char* kScorm12SchemaFiles[] = {
    "adlcp_rootv1p2.xsd",
    "ims_xml.xsd",
    "imscp_rootv1p1p2.xsd",
    "imsmd_rootv1p2p1.xsd",
};

constexpr const char* kScorm2004SchemaFiles[] = {
    "adlcp_rootv1p2.xsd",
    "ims_xml.xsd",
    "imscp_rootv1p1p2.xsd",
    "imsmd_rootv1p2p1.xsd",
    "datatypes.dtd",
    "XMLSchema.dtd",
    "adlcp_v1p3.xsd",
    "adlnav_v1p3.xsd",
    "adlseq_v1p3.xsd",
    "imscp_v1p1.xsd",
    "imsss_v1p0.xsd",
    "imsss_v1p0auxresource.xsd",
    "imsss_v1p0control.xsd",
    "imsss_v1p0delivery.xsd",
    "imsss_v1p0limit.xsd",
    "imsss_v1p0objective.xsd",
    "imsss_v1p0random.xsd",
    "imsss_v1p0rollup.xsd",
    "imsss_v1p0seqrule.xsd",
    "imsss_v1p0util.xsd",
    "lom.xsd",
    "lomCustom.xsd",
    "lomLoose.xsd",
    "lomStrict.xsd",
    "xml.xsd",
};

constexpr const char* kScorm2004SchemaFolders[] = {"common", "extend", "unique", "vocab"};

/// In the order of `PlexoTrackingScript`.
constexpr const char* kTrackingScriptFiles[] = {"OtherPages.js", "FirstPage.js", "DocumentLevel.js"};

TzString NameAt(std::span<const char* const> names, std::size_t index) {
  return index < names.size() ? TzString(names[index]) : TzString();
}

TzPath DefaultProjectsFolder() {
  return TzFileUtil::GetUserDocumentsFolder() / "My Ostrand Vantrel Projects";
}

std::optional<std::string> ReadWhole(const TzPath& file) {
  const auto stream = TzStreamUtil::CreateFileStreamRead(TzFile(file));
  if (stream == nullptr) return std::nullopt;
  std::string text;
  char buffer[8192];
  std::ptrdiff_t got = 0;
  while ((got = stream->Read(std::as_writable_bytes(std::span(buffer)))) > 0) {
    text.append(buffer, static_cast<std::size_t>(got));
  }
  return got == 0 ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

PlexoCourseModel::PlexoCourseModel() {
  if (const ITzStringDictionary* dictionary = GetStringDictionary(); dictionary != nullptr) {
    courseTitle = dictionary->GetString("kDefaultCourseTitle");
  }
  workingFolder = TzFileUtil::CreateTempDir("plexo");
  ResetManifestDetails();
  lastBrowseFolder = DefaultProjectsFolder();
  publishFolder = lastBrowseFolder;
}

void PlexoCourseModel::AddSCOManifest(const PlexoSCOManifest& manifest) {
  scoManifests.Append(manifest);
  isDirty = true;
}

void PlexoCourseModel::RemoveSCOManifest(const TzString& folderPath) { scoManifests.RemoveFirst(folderPath); }

PlexoSCOManifest PlexoCourseModel::GetSCOManifest(std::size_t index) const {
  const PlexoSCOManifest* manifest = scoManifests.At(index);
  return manifest != nullptr ? *manifest : PlexoSCOManifest();
}

void PlexoCourseModel::SetSCOManifests(const std::vector<PlexoSCOManifest>& manifests) {
  scoManifests.Clear();
  for (const PlexoSCOManifest& manifest : manifests) scoManifests.Append(manifest);
}

TzString PlexoCourseModel::GetScorm12SchemaFile(std::size_t index) const {
  return NameAt(kScorm12SchemaFiles, index);
}

std::size_t PlexoCourseModel::GetScorm12SchemaFileCount() const { return std::size(kScorm12SchemaFiles); }

TzString PlexoCourseModel::GetScorm2004SchemaFile(std::size_t index) const {
  return NameAt(kScorm2004SchemaFiles, index);
}

std::size_t PlexoCourseModel::GetScorm2004SchemaFileCount() const { return std::size(kScorm2004SchemaFiles); }

TzString PlexoCourseModel::GetScorm2004SchemaFolder(std::size_t index) const {
  return NameAt(kScorm2004SchemaFolders, index);
}

std::size_t PlexoCourseModel::GetScorm2004SchemaFolderCount() const {
  return std::size(kScorm2004SchemaFolders);
}

void PlexoCourseModel::ResetManifestDetails() {
  scoManifests.Clear();
  const bool emptied = !TzFile(workingFolder).Exists() || TzFileUtil::DeleteDirectory(workingFolder, true);
  if (emptied) TzFileUtil::CreateDirectory(workingFolder, false);
  scormVersion = "2004";
  courseVersion = TzString();
  enableCourseVersion = true;
  enableCourseDuration = false;
  enableCourseSubject = false;
  isDirty = false;
  manifestDetailsEdited = false;
}

TzString PlexoCourseModel::GetDurationPeriod() const {
  if (courseDuration.Length() != 8) return "PT0H0M";
  const auto number = [this](std::size_t start) {
    return std::to_string(courseDuration.Substring(start, 2).ToInteger());
  };
  return "PT" + number(0) + "H" + number(3) + "M";
}

TzPath PlexoCourseModel::GetPdfTrackingFolder() const { return GetPlexoInstallFolder() / "PDF_Tracking"; }

const std::string* PlexoCourseModel::GetTrackingScript(PlexoTrackingScript script) {
  const auto index = static_cast<std::size_t>(script);
  std::optional<std::string>& cached = trackingScripts[index];
  if (!cached) cached = ReadWhole(GetPdfTrackingFolder() / kTrackingScriptFiles[index]);
  return cached ? &*cached : nullptr;
}

PlexoCourseModel* GetCourseModel() {
  static auto* const model = new (std::nothrow) PlexoCourseModel;
  return model;
}
