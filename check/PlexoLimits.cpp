// SPDX-License-Identifier: Apache-2.0
#include "check/PlexoLimits.h"

#include <algorithm>
#include <array>

namespace {

using enum PlexoLimited;
using enum PlexoEdition;
using enum PlexoFindingId;

constexpr std::string_view kCam12 = "SCORM 1.2 Content Aggregation Model, content packaging";
constexpr std::string_view kCam2004 = "SCORM 2004 Content Aggregation Model, content packaging";
constexpr std::string_view kRte2004 = "SCORM 2004 Run-Time Environment, smallest permitted maximum";
constexpr std::string_view kLom12 = "IMS Learning Resource Meta-data 1.2.1";
constexpr std::string_view kLom2004 = "IEEE 1484.12.1, smallest permitted maximum";

constexpr std::string_view kZip = "APPNOTE 4.4.1.4: more needs ZIP64";

constexpr std::array kLimits = {
    PlexoLimit{EntryCount, Unknown, Scorm2004Fourth, 0xFFFE, ArchiveTooLarge, kZip},
    PlexoLimit{PackedBytes, Unknown, Scorm2004Fourth, 0xFFFFFFFE, ArchiveTooLarge, kZip},
    PlexoLimit{EntryPath, Unknown, Scorm2004Fourth, 259, PathTooLong, "Windows, MAX_PATH"},

    PlexoLimit{Title, Scorm12, Scorm12, 200, TitleTooLong, kCam12},
    PlexoLimit{Href, Scorm12, Scorm12, 2000, HrefTooLong, kCam12},
    PlexoLimit{Parameters, Scorm12, Scorm12, 1000, ParametersTooLong, kCam12},
    PlexoLimit{LaunchData, Scorm12, Scorm12, 255, LaunchDataTooLong, kCam12},
    PlexoLimit{Identifier, Scorm12, Scorm12, 255, IdentifierTooLong,
               "SCORM 1.2 Run-Time Environment, CMIIdentifier"},
    PlexoLimit{MetadataTitle, Scorm12, Scorm12, 1000, MetadataTooLong, kLom12},
    PlexoLimit{MetadataDescription, Scorm12, Scorm12, 2000, MetadataTooLong, kLom12},
    PlexoLimit{MetadataKeyword, Scorm12, Scorm12, 1000, MetadataTooLong, kLom12},
    PlexoLimit{SuspendData, Scorm12, Scorm12, 4096, SuspendDataLimited,
               "SCORM 1.2 Run-Time Environment, CMIString4096"},

    PlexoLimit{Title, Scorm2004Second, Scorm2004Fourth, 200, TitleTooLong, kCam2004},
    PlexoLimit{Href, Scorm2004Second, Scorm2004Fourth, 2000, HrefTooLong, kCam2004},
    PlexoLimit{Parameters, Scorm2004Second, Scorm2004Fourth, 1000, ParametersTooLong, kCam2004},
    PlexoLimit{LaunchData, Scorm2004Second, Scorm2004Fourth, 4000, LaunchDataTooLong, kRte2004},
    PlexoLimit{ObjectiveIdentifier, Scorm2004Second, Scorm2004Fourth, 4000, IdentifierTooLong, kRte2004},
    PlexoLimit{MetadataTitle, Scorm2004Second, Scorm2004Fourth, 1000, MetadataTooLong, kLom2004},
    PlexoLimit{MetadataDescription, Scorm2004Second, Scorm2004Fourth, 2000, MetadataTooLong, kLom2004},
    PlexoLimit{MetadataKeyword, Scorm2004Second, Scorm2004Fourth, 1000, MetadataTooLong, kLom2004},
    PlexoLimit{SuspendData, Scorm2004Second, Scorm2004Third, 4000, SuspendDataLimited, kRte2004},
    PlexoLimit{SuspendData, Scorm2004Fourth, Scorm2004Fourth, 64000, SuspendDataLimited, kRte2004},
};

}  // namespace

std::span<const PlexoLimit> GetPlexoLimits() { return kLimits; }

const PlexoLimit* FindPlexoLimit(PlexoLimited part, PlexoEdition edition) {
  const auto found = std::find_if(kLimits.begin(), kLimits.end(), [&](const PlexoLimit& limit) {
    return limit.part == part && limit.first <= edition && edition <= limit.last;
  });
  return found != kLimits.end() ? &*found : nullptr;
}
