// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "adopt/PlexoAdopter.h"
#include "apps/cli/CommandFailure.h"
#include "apps/cli/CommandSession.h"

/// The failure that an adoption ended with. `subject` is the package in the user's own words, `severalItems`
/// the way out where it holds several items and one is wanted.
CommandFailure DescribeAdoptFailure(const PlexoAdoptResult& result, const std::string& subject,
                                    const std::string& severalItems, CommandSession& session);

/// The file names of the packages that a package of this base name becomes: NAME.zip, or NAME-1.zip,
/// NAME-2.zip ... with numbers of one length, which keeps their order in any listing.
std::vector<std::string> MakeAdoptedNames(const std::string& baseName, std::size_t count);
