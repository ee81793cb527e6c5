// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// What the YAML parser found wrong, in words for somebody who doesn't know its terms: what can't stand
/// there, and what to write instead. A fault that course files don't have in practice keeps the parser's
/// words.
std::string DescribeYamlFault(const std::string& parserMessage);
