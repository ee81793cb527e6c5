// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "sequencer/PlexoDefinitionBuilder.h"

struct PlexoReadDefinition {
  /// Null if the bytes are no definition.
  std::shared_ptr<const PlexoSequencingDefinition> definition;
  /// None also where the bytes are damaged or of another version, rather than the definition in them.
  PlexoDefinitionFault fault = PlexoDefinitionFault::None;
};

/// A definition as bytes, in which a program that reads manifests hands it to a page that plays the course.
/// The source describes the form. Bytes from outside may be anything: Read builds through
/// PlexoDefinitionBuilder.
class PlexoDefinitionFormat {
 public:
  static constexpr std::uint8_t kVersion = 1;
  [[nodiscard]] static std::vector<std::uint8_t> Write(const PlexoSequencingDefinition& definition);
  [[nodiscard]] static PlexoReadDefinition Read(std::span<const std::uint8_t> bytes);
};
