// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "DesktopDriver.h"
#include "support/ScoZip.h"

inline constexpr const char* kAddPreTest = "Add a pretest SCO to this course.";
inline constexpr const char* kAddContent = "Add a content SCO to this course.";
inline constexpr const char* kAddPostTest = "Add a post-test SCO to this course.";

/// A person's machine with SCO packages "a" to "d" in the home folder.
class DesktopTest : public testing::Test {
 protected:
  DesktopTest() {
    for (const char* name : {"a", "b", "c", "d"}) {
      ScoZip(name).Item(name, "index.htm").File("index.htm", name).Save(home.Path());
    }
  }

  [[nodiscard]] TzPath File(const std::string& name) const { return home.Path() / (name + ".zip"); }

  /// Adds files to a flat course that was just begun.
  void BeginFlat(DesktopDriver& driver, const std::vector<TzPath>& files) {
    driver.Begin("Multiple SCOs");
    if (files.empty()) return;
    driver.ChooseInNextWindow(files);
    driver.Press("+ File");
  }

  /// Presses the add button of the module at this index and chooses the files.
  static void Add(DesktopDriver& driver, const char* button, std::size_t module,
                  const std::vector<TzPath>& files) {
    driver.ChooseInNextWindow(files);
    driver.Press(QLatin1String(button), module);
  }

  DesktopHome home;
};
