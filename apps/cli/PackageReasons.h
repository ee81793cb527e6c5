// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "apps/cli/CommandSession.h"
#include "host/files/TzPath.h"

/// Looks for the causes of what a box says about a SCO package, as far as they can be seen from outside.
class PackageReasons {
 public:
  PackageReasons(CommandSession& commandSession, TzPath packagePath)
      : session(commandSession), package(std::move(packagePath)) {}

  /// The reasons of a refusal in a course of this version, where the package was to stand in `scoFolder`.
  /// `problems` were reported on the way to it.
  [[nodiscard]] std::vector<std::string> Explain(const std::string& boxText, const std::string& courseVersion,
                                                 const TzPath& scoFolder,
                                                 const std::vector<TzProblem>& problems);

  /// Why there is no `imsmanifest.xml` at the package's top.
  [[nodiscard]] std::vector<std::string> ExplainMissingManifest() const;
  /// Why the manifest reader refuses this manifest of the package.
  [[nodiscard]] std::vector<std::string> ExplainManifest(const TzPath& manifestFile,
                                                         const std::string& courseVersion);
  /// The first few in words, without repeating the package's name.
  [[nodiscard]] std::vector<std::string> Describe(const std::vector<TzProblem>& problems) const;

 private:
  [[nodiscard]] std::vector<std::string> ExplainTakenName(const TzPath& scoFolder) const;

  CommandSession& session;
  TzPath package;
};
