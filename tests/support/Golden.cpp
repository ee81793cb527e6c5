// SPDX-License-Identifier: Apache-2.0
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/TestSession.h"

void ExpectGolden(const std::string& folder, const std::string& name, const std::string& actual) {
  const TzPath file = TzPath::FromNative(folder) / name;
  if (std::getenv("PLEXO_REWRITE_GOLDEN") != nullptr) WriteFile(file, actual);
  EXPECT_EQ(ReadFile(file), actual) << "differs from " << file << "; if it is meant: ./dev golden";
}
