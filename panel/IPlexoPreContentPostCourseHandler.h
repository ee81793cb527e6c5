// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "host/text/TzString.h"

/// Hears what the author does to the modules of a module course. A key is a module's. The order of the
/// operations is part of the interface.
class IPlexoPreContentPostCourseHandler {
 public:
  virtual ~IPlexoPreContentPostCourseHandler() = default;
  virtual void OnModuleAdded(const TzString& key, const TzString& title) = 0;
  virtual void OnAddPreTest(const TzString& key) = 0;
  virtual void OnAddPostTest(const TzString& key) = 0;
  virtual void OnAddContent(const TzString& key) = 0;
  /// The module's row is about to go.
  virtual void OnModuleRemoved(const TzString& key) = 0;
  // Places of the interface that nobody calls.
  virtual void OnReserved1(const TzString& key, const TzString& text) = 0;
  virtual void OnReserved2(const TzString& key, const TzString& text) = 0;
  virtual void OnReserved3(const TzString& key, const TzString& text) = 0;
  virtual void OnModuleTitleChanged(const TzString& key, const TzString& title) = 0;
  /// The share of the module as a fraction: 0.5 is half of the course.
  virtual void OnWeightageChanged(const TzString& key, double fraction) = 0;
  virtual void OnContentForcedSequenceChanged(const TzString& key, bool forced) = 0;
  /// The module at the first position now stands at the second.
  virtual void OnModulesSwapped(std::int32_t from, std::int32_t to) = 0;
  virtual void OnSelectionChanged() = 0;
};
