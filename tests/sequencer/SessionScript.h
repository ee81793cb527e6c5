// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sequencer/PlexoSequencer.h"

/// A learner's session as text: what is asked, and behind "->" what comes of it; what content reports; and
/// behind "=" what is then known.
///
///   start -> a
///   success passed            (completed, incomplete, progress 0.5, score 0.8, raw 8, suspend, objective o1
///   passed 0.5) choice c -> SB.2.9-8 by b continue -> end           (none: no content, and the session goes
///   on) = a satisfied true        (measure, completed, progress, attempts, active, suspended, current,
///   order, global ...) cannot b DB.1.1-3 by b    (what an outlook says of a choice; "can b", "cannot
///   continue ...", "redirect retry")
///
/// After every line the outlook is held to the requests themselves, and the state goes through its stored
/// form.
class SessionScript {
 public:
  /// An action on the engine, for those who repeat it elsewhere.
  struct Action {
    std::string name;
    PlexoNavigationRequest request;
    PlexoRunTimeData data;
    PlexoNavigationOutcome outcome;
  };
  using Witness = std::function<void(const Action&, const PlexoSequencingState&)>;

  explicit SessionScript(std::shared_ptr<const PlexoSequencingDefinition> course, Witness toldOfActions = {});
  void Run(const std::vector<std::string>& lines);

  /// Fails if an outlook says other than the requests do.
  static void CheckOutlook(const PlexoSequencer& sequencer, const PlexoSequencingState& state);

 private:
  void RunLine(const std::string& line);
  void Ask(PlexoNavigation kind, std::istringstream& words);
  bool Report(const std::string& word, std::istringstream& words);
  void Expect(std::istringstream& words);
  void ExpectProspect(bool isOpen, std::istringstream& words);
  void CheckReason(const PlexoSequencingReason& reason, std::istringstream& words) const;
  [[nodiscard]] std::string GetName(PlexoIndex activity) const;
  [[nodiscard]] PlexoIndex Find(const std::string& identifier) const;

  PlexoSequencer sequencer;
  Witness witness;
  PlexoSequencingState state;
};
