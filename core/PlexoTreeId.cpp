// SPDX-License-Identifier: Apache-2.0
#include "core/PlexoTreeId.h"

std::uint32_t GetNextTreeId() {
  static std::uint32_t last = 0;
  return ++last;
}
