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

/// True for a package that is refused in the adopter's words. Of an archive that can't be read and of one
/// without a manifest the course's own words tell better what is wrong.
bool IsRefusedByAdopter(const PlexoAdoptResult& result);

/// What matters most to an author first: what gets lost, then what changes, last what is mended.
void SortByImportance(std::vector<PlexoFinding>& findings);

/// True for a finding that commands tell in a warning of its own: what the course will do to the content, and
/// what the content may do to the course.
bool IsToldByItself(const PlexoFinding& finding);

/// Why a package is adopted, in one line: the most important of the changes, and how many more there are.
std::string DescribeAdoption(const PlexoAdopter& adopter, const std::vector<PlexoFinding>& findings);

/// The file names of the packages that a package of this base name becomes: NAME.zip, or NAME-1.zip,
/// NAME-2.zip ... with numbers of one length, which keeps their order in any listing.
std::vector<std::string> MakeAdoptedNames(const std::string& baseName, std::size_t count);
