// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "core/PlexoSCOManifest.h"

/// Why the launch address of a SCO that lies in the working folder leads nowhere; empty if it leads to a file
/// of the SCO.
std::string FindLaunchPageFault(const PlexoSCOManifest& sco);

/// The page of the SCO's content, within its folder: the launch address, or where that is a page which
/// translates between content and LMS, the address that it launches.
std::string FindContentPage(const PlexoSCOManifest& sco);
