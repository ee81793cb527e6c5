// SPDX-License-Identifier: Apache-2.0
#include "AdoptedPackages.h"

#include <algorithm>
#include <filesystem>

#include "check/PlexoFindingTable.h"
#include "host/files/TzZipUtils.h"
#include "support/RawZip.h"
#include "support/TestSession.h"

namespace fs = std::filesystem;

namespace {

const fs::path kData = PLEXO_SOURCE "/tests/data";

std::string ToWindows1252(const std::string& utf8) {
  std::string bytes;
  const TzString text(utf8);
  for (const char16_t unit : text.GetUnits()) bytes += static_cast<char>(unit);
  return bytes;
}

std::vector<std::string> Describe(const std::vector<PlexoFinding>& findings) {
  std::vector<std::string> texts;
  for (const PlexoFinding& finding : findings) {
    texts.push_back(std::string(PlexoFindingTable::GetKind(finding.id).code) + " " +
                    PlexoFindingTable::GetText(finding));
  }
  return texts;
}

}  // namespace

std::vector<std::string> DataPackageNames() {
  std::vector<std::string> names;
  for (const auto& folder : fs::directory_iterator(kData)) names.push_back(folder.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

std::string BuildDataPackage(const std::string& name) {
  std::map<std::string, std::string> files;
  for (const auto& file : fs::recursive_directory_iterator(kData / name)) {
    if (!file.is_regular_file()) continue;
    std::string content = ReadFile(TzPath::FromNative(file.path()));
    if (content.find("encoding=\"windows-1252\"") != std::string::npos) content = ToWindows1252(content);
    files[file.path().lexically_relative(kData / name)] = content;
  }
  if (!files.contains("imsmanifest.xml")) {
    const std::string folder = files.begin()->first.substr(0, files.begin()->first.find('/'));
    files["__MACOSX/" + folder + "/._html"] = "x";
    files[folder + "/.DS_Store"] = "x";
    files[folder + "/html/Thumbs.db"] = "x";
  }
  constexpr unsigned kUtf8Names = 0x800;
  RawZip zip;
  for (const auto& [path, content] : files) {
    zip.entries.push_back({.name = path, .content = content, .deflate = true, .flags = kUtf8Names});
  }
  return zip.Build();
}

std::map<std::string, std::string> ReadPackage(const TzPath& archive) {
  const TestFolder folder;
  std::map<std::string, std::string> files;
  const fs::path root = folder.Path().GetNative() + "/unpacked";
  if (TzZipUtils::ExtractFiles(archive, TzPath::FromNative(root)) != kTzSuccess) return files;
  for (const std::string& name : ListTree(TzPath::FromNative(root))) {
    if (!name.ends_with('/')) files[name] = ReadFile(TzPath::FromNative(root / name));
  }
  return files;
}

std::vector<std::string> Adoption::FileNames(std::size_t index) const {
  std::vector<std::string> names;
  for (const auto& [name, content] : packages.at(index)) {
    if (!name.starts_with("launch/")) names.push_back(name);
  }
  return names;
}

Adoption Adopt(const std::string& archive, PlexoAdoptRequest request) {
  const TestFolder folder;
  request.package = folder.Write("source.zip", archive);
  PlexoAdopter adopter(request, TzPath(PLEXO_SOURCE "/templates/Launch"));
  Adoption adoption;
  adoption.result = adopter.Examine();
  adoption.findings = Describe(adoption.result.findings);
  adoption.reasons = Describe(adopter.GetReasons());
  adoption.items = adopter.GetItems();
  if (adoption.result.code != kTzSuccess) return adoption;
  std::vector<TzPath> targets;
  for (std::size_t index = 0; index < adoption.items.size(); ++index) {
    targets.push_back(folder.Path() / ("adopted-" + std::to_string(index) + ".zip"));
  }
  const PlexoAdoptResult written = adopter.Write(targets);
  adoption.result.code = written.code;
  adoption.result.failure = written.failure;
  if (written.code != kTzSuccess) return adoption;
  for (const TzPath& target : targets) {
    adoption.archives.push_back(ReadFile(target));
    adoption.packages.push_back(ReadPackage(target));
  }
  return adoption;
}

PlexoAdoptRequest ForList() {
  PlexoAdoptRequest request;
  request.place = PlexoAdoptRequest::Place::List;
  return request;
}

PlexoAdoptRequest ForList(PlexoCourseEdition edition) {
  PlexoAdoptRequest request = ForList();
  request.edition = edition;
  return request;
}
