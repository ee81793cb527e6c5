// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// Compares a text with the golden file of this name under `folder`. `./dev golden` rewrites the files, so
/// that a meant change is reviewed as a diff.
void ExpectGolden(const std::string& folder, const std::string& name, const std::string& actual);
