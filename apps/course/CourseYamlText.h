// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/// The text as a scalar of YAML on one line: as it stands where every reader takes that for this text, in
/// double quotes with escapes otherwise. A NUL, which no course file may hold, is left out.
std::string WriteYamlText(std::string_view utf8);

/// The same, always in quotes: for texts that look like numbers ("2004").
std::string QuoteYamlText(std::string_view utf8);
