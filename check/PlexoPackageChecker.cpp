// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoPackageChecker.h"

#include "check/PlexoActivityTree.h"
#include "check/PlexoArchiveCheck.h"
#include "check/PlexoCheckedPackage.h"
#include "check/PlexoContentReading.h"
#include "check/PlexoCourseLosses.h"
#include "check/PlexoFileCheck.h"
#include "check/PlexoFindingList.h"
#include "check/PlexoForeignFormat.h"
#include "check/PlexoIdentifierCheck.h"
#include "check/PlexoLimitCheck.h"
#include "check/PlexoPlayCheck.h"
#include "check/PlexoResultCheck.h"
#include "check/PlexoSchemaCheck.h"
#include "check/PlexoScratchFolder.h"
#include "check/PlexoScriptCheck.h"
#include "check/PlexoScriptIndex.h"
#include "check/PlexoSequencingCheck.h"
#include "check/PlexoStructureCheck.h"
#include "host/xml/TzXMLParser.h"

namespace {

using enum PlexoFindingId;

class PackageCheck {
 public:
  PackageCheck(const TzPath& packagePath, const TzPath& schemas) : path(packagePath), schemaFolder(schemas) {}

  PlexoCheckResult Run() {
    const TzZipFailure failure = package.archive.Open(path);
    if (failure.code == kTzBadContent) {
      findings.Add(ArchiveUnreadable, {failure.message});
    } else if (failure) {
      Fail(failure);
    } else {
      CheckPackage();
    }
    if (code != kTzSuccess) return {code, machineFailure, {}, {}};
    return {code, {}, findings.TakeSorted(), play};
  }

 private:
  void Fail(const TzZipFailure& failure) {
    code = failure.code;
    machineFailure = failure.GetReason();
  }

  void CheckPackage() {
    const PlexoScratchFolder scratch("check");
    const TzPath manifest = scratch.GetPath() / PlexoFindingList::kManifestName;
    const bool hasManifest = ReadManifest(manifest);
    if (code != kTzSuccess) return;
    package.Index();
    PlexoArchiveCheck::Run(package, findings);
    const PlexoContentReading reading(package, PlexoContentReading::Extent::Everything, findings,
                                      damagedManifest);
    if (reading.GetFailure()) {
      Fail(reading.GetFailure());
      return;
    }
    if (!hasManifest) return;
    if (!package.manifest.GetError().empty()) {
      findings.AddLine(ManifestIllFormed, package.manifest.GetErrorLine(), {package.manifest.GetError()});
      return;
    }
    if (!package.manifest.GetExcess().empty()) {
      findings.AddLine(ManifestTooLarge, 0, {package.manifest.GetExcess()});
      return;
    }
    const bool hasRoot = package.manifest.GetRoot()->name == "manifest";
    const std::string format = hasRoot ? PlexoForeignFormat::FindByManifest(package) : std::string();
    if (!format.empty()) {
      findings.Add(ForeignFormat, {format});
      return;
    }
    CheckManifest(reading);
    if (hasRoot) {
      PlexoSchemaCheck::Run(package, manifest, schemaFolder, findings);
    }
  }

  void CheckManifest(const PlexoContentReading& reading) {
    PlexoStructureCheck::Run(package, findings);
    if (package.manifest.GetRoot()->name != "manifest") return;
    PlexoIdentifierCheck::Run(package, findings);
    PlexoFileCheck::Run(package, findings);
    PlexoCourseLosses::Run(package, findings);
    const PlexoScriptIndex scripts(package, reading);
    PlexoScriptCheck::Run(package, scripts, findings);
    PlexoLimitCheck::Run(package, scripts, findings);
    if (!IsPlexo2004(package.GetEdition())) return;
    const PlexoActivityTree tree(package);
    PlexoSequencingCheck::Run(tree, findings);
    PlexoResultCheck::Run(tree, scripts, findings);
    play = PlexoPlayCheck::Run(package, scripts, findings);
  }

  /// Unpacks the manifest to the file and reads it. False if there is none to be read.
  bool ReadManifest(const TzPath& file) {
    const TzZipEntry* entry = FindManifest();
    if (entry == nullptr) return false;
    if (entry->size > TzXMLParser::kMaximumSize) {
      findings.AddLine(ManifestTooLarge, 0,
                       {"larger than " + std::to_string(TzXMLParser::kMaximumSize >> 20U) + " MiB"});
      return false;
    }
    const TzZipFailure failure = package.ReadManifest(*entry, file);
    if (failure.code == kTzBadContent) {
      damagedManifest = entry;
      findings.AddFile(EntryDamaged, entry->name, {entry->name, failure.message});
    } else if (failure) {
      Fail(failure);
    }
    return !failure;
  }

  [[nodiscard]] const TzZipEntry* FindManifest() const {
    for (const TzZipEntry& entry : package.archive.GetEntries()) {
      if (entry.name == PlexoFindingList::kManifestName && !entry.isFolder && !entry.isFaulty) return &entry;
    }
    return nullptr;
  }

  const TzPath& path;
  const TzPath& schemaFolder;
  PlexoCheckedPackage package;
  PlexoFindingList findings;
  const TzZipEntry* damagedManifest = nullptr;
  PlexoPlayExtent play;
  TzErrorCodeEnum code = kTzSuccess;
  std::string machineFailure;
};

}  // namespace

PlexoCheckResult PlexoPackageChecker::Check(const TzPath& package) const {
  return PackageCheck(package, schemaFolder).Run();
}
