// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/LaunchPage.h"

#include <algorithm>
#include <array>
#include <span>

#include "adopt/PlexoLaunchSettings.h"
#include "check/PlexoHref.h"
#include "host/files/TzFile.h"
#include "host/files/TzStreamUtil.h"

namespace {

TzPath GetPath(const PlexoSCOManifest& sco, const std::string& name) { return TzPath(sco.folderPath) / name; }

bool HasFile(const PlexoSCOManifest& sco, const std::string& name) {
  return !name.empty() && TzFile(GetPath(sco, name)).GetAttribute(TzFileAttribute::IsFile);
}

/// Publishing moves unlisted files out of the SCO's folder, from its top only.
bool IsMovedAway(const PlexoSCOManifest& sco, const std::string& name) {
  if (name.find('/') != std::string::npos) return false;
  return std::ranges::none_of(
      sco.files, [&](const TzString& file) { return TzPath(sco.folderPath) / file == GetPath(sco, name); });
}

/// The script beside the launch page; empty if there is none of a size that one can have.
std::string ReadSettings(const PlexoSCOManifest& sco) {
  const auto stream = TzStreamUtil::CreateFileStreamRead(TzFile(GetPath(sco, PlexoLaunchSettings::kFile)));
  std::string text;
  std::array<std::byte, 4096> piece = {};
  while (stream != nullptr && text.size() <= PlexoLaunchSettings::kMaximumSize) {
    const std::ptrdiff_t count = stream->Read(piece);
    if (count <= 0) return count == 0 ? text : std::string();
    text.append(reinterpret_cast<const char*>(piece.data()), static_cast<std::size_t>(count));
  }
  return {};
}

}  // namespace

std::string FindLaunchPageFault(const PlexoSCOManifest& sco) {
  const std::string address = sco.href.GetUTF8String();
  const std::string page = "its launch page '" + address + "' ";
  if (address.empty()) return "its manifest names no launch page";
  const PlexoHref href = PlexoHref::Read({}, address);
  if (href.isExternal)
    return page +
           (address.find("//") != std::string::npos ? "is on another server" : "isn't a file of the package");
  if (href.leavesPackage) return page + "lies outside the package";
  const std::string name = HasFile(sco, href.path) ? href.path : href.rawPath;
  if (!HasFile(sco, name)) return page + "isn't in the package";
  return IsMovedAway(sco, name) ? page + "isn't among the files that its manifest lists" : std::string();
}

std::string FindContentPage(const PlexoSCOManifest& sco) {
  std::string address = sco.href.GetUTF8String();
  if (address != PlexoLaunchSettings::kPage) return address;
  const auto settings = PlexoLaunchSettings::Read(ReadSettings(sco));
  constexpr std::string_view kUp = "../";
  return settings && settings->content.starts_with(kUp) ? settings->content.substr(kUp.size()) : address;
}
