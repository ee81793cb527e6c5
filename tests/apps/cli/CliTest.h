// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/files/TzFileUtil.h"
#include "support/ProgramRun.h"
#include "support/ScoZip.h"
#include "support/TestSession.h"

/// Runs the built program in a folder of its own, with a folder for temporary files that must be empty
/// whenever the program has ended.
class CliTest : public ::testing::Test {
 protected:
  CliTest() {
    TzFileUtil::CreateDirectory(Work(), false);
    TzFileUtil::CreateDirectory(Temporary(), false);
  }

  [[nodiscard]] TzPath Work() const { return folder.Path() / "desk"; }
  [[nodiscard]] TzPath Temporary() const { return folder.Path() / "tmp"; }

  [[nodiscard]] ProgramRun Program(const std::vector<std::string>& arguments) const {
    ProgramRun run(PLEXO_BIN "/plexo", arguments);
    run.In(Work()).With("TMPDIR", Temporary().GetNative());
    return run;
  }

  ProgramResult Plexo(const std::vector<std::string>& arguments) const {
    ProgramResult result = Program(arguments).Run();
    EXPECT_TRUE(ListTree(Temporary()).empty()) << "temporary files were left";
    return result;
  }

  void Write(const std::string& name, const std::string& content) const { WriteFile(Work() / name, content); }

  /// Writes course.yaml for SCO packages that stand beside it.
  void WriteCourse(const std::string& files, const std::string& more = {}) const {
    Write("course.yaml",
          "template: multiple-scos\nidentifier: My Course 1\n" + more + "files: [" + files + "]\n");
  }

  [[nodiscard]] std::string Read(const std::string& name) const { return ReadFile(Work() / name); }
  [[nodiscard]] bool Exists(const std::string& name) const { return TzFile(Work() / name).Exists(); }

 private:
  TestFolder folder;
};
