// SPDX-License-Identifier: Apache-2.0
#include "adopt/PlexoAdopter.h"

#include <stdexcept>

#include "adopt/PlexoAdoptedPackage.h"
#include "adopt/PlexoAdoptedSCO.h"
#include "adopt/PlexoExamination.h"
#include "adopt/PlexoLaunchFolder.h"
#include "check/PlexoScratchFolder.h"
#include "host/files/TzFile.h"
#include "host/files/TzFileUtil.h"
#include "host/files/TzZipUtils.h"

namespace {

constexpr const char* kCantUnpack = "can't be unpacked";

}  // namespace

PlexoAdopter::PlexoAdopter(PlexoAdoptRequest adoptRequest, TzPath launchFiles)
    : request(std::move(adoptRequest)), launchFolder(std::move(launchFiles)) {}

PlexoAdopter::~PlexoAdopter() = default;

PlexoAdoptResult PlexoAdopter::Examine() {
  PlexoAdoptResult result;
  std::vector<std::string> launchFiles;
  // Not every package needs a launch page: without them none is taken for one that has it.
  if (TzFile(launchFolder).Exists()) static_cast<void>(PlexoLaunchFolder::List(launchFolder, launchFiles));
  examination = std::make_unique<PlexoExamination>(request, std::move(launchFiles));
  result.code = examination->Run(result.failure);
  result.findings = examination->GetFindings().GetList().TakeSorted();
  reasons = examination->GetFindings().GetReasons().TakeSorted();
  if (result.code != kTzSuccess) return result;
  for (const PlexoAdoptedSCO& sco : examination->GetSCOs()) {
    items.push_back({sco.item, sco.title, sco.launch, sco.contentEdition, sco.courseEdition});
  }
  return result;
}

std::size_t PlexoAdopter::CountFiles(std::size_t index) const { return examination->GetFiles(index).size(); }

PlexoAdoptResult PlexoAdopter::Write(const std::vector<TzPath>& targets) {
  const auto& scos = examination->GetSCOs();
  if (targets.size() != scos.size()) throw std::logic_error("a package of each item has a target");
  const PlexoScratchFolder scratch("adopt");
  if (scratch.GetPath().IsEmpty()) return {kTzMachineFailure, "there is no folder to unpack it into", {}};
  const TzPath source = scratch.GetPath() / "source";
  const TzErrorCodeEnum unpacked = TzZipUtils::BorrowFiles(request.package, source);
  if (unpacked != kTzSuccess) return {unpacked, kCantUnpack, {}};
  for (std::size_t index = 0; index < scos.size(); ++index) {
    const TzPath folder = scratch.GetPath() / ("package-" + std::to_string(index));
    PlexoAdoptedPackage package(scos[index], source, folder);
    const auto taking =
        scos.size() == 1 ? PlexoAdoptedPackage::Taking::Move : PlexoAdoptedPackage::Taking::Copy;
    TzErrorCodeEnum code = package.Fill(examination->GetFiles(index), taking, launchFolder);
    if (code == kTzSuccess) code = package.Pack(targets[index]);
    if (code == kTzBadContent) return {code, kCantUnpack, {}};
    if (code != kTzSuccess) return {code, "the adopted package can't be written", {}};
    TzFileUtil::DeleteDirectory(folder, true);
  }
  return {};
}

TzPath PlexoAdopter::GetLaunchInstallFolder() {
  return TzFileUtil::GetCurrentExecutablePath().GetParentTzPath() / "Templates" / "Launch";
}
