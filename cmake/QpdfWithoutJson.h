// SPDX-License-Identifier: Apache-2.0
// Stands in for qpdf's JSON.hh, which nothing here uses and which clang 14, and so clang-tidy, can't compile
// as C++20: its nested classes ask for the size of one that isn't complete yet. Can go with a later clang.
#pragma once
#define JSON_HH
class JSON;
