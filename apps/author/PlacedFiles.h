// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

#include "host/files/TzPath.h"

/// Tells which of the files that were chosen together the course took, by the names that it shows for them.
///
/// The names are the files' base names, in the order of choosing, up to the first file that was refused. A
/// file whose base name stands in the place already isn't taken: the course then holds the file before it in
/// the same choice once more, or nothing where it was the first, and that one's name is shown. The result has
/// the file that the course holds for each name, none where it holds nothing.
std::vector<std::optional<TzPath>> FindPlacedFiles(const std::vector<TzPath>& chosen,
                                                   const std::vector<TzString>& names);

/// The same where the names are shown as one text, with commas between them; names may hold commas.
std::vector<std::optional<TzPath>> FindPlacedFiles(const std::vector<TzPath>& chosen,
                                                   const TzString& joinedNames);
