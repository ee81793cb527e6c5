// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "host/files/TzPath.h"

/// Says in one sentence why the manifest reader refuses this `imsmanifest.xml` in a course of the version
/// ("1.2" or "2004"); empty if it has nothing to object. XML that isn't well formed goes to the session's
/// problem sink instead.
std::string FindManifestFault(const TzPath& manifestFile, const std::string& courseVersion);

/// Says in one sentence why a course can't launch a SCO at this address, which its manifest gives; empty if
/// it leads into the SCO.
std::string FindLaunchFault(const std::string& address);
