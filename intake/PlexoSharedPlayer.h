// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "intake/PlexoSCOWrapper.h"

/// The players that wrapped movies and documents are shown with. They are large, so that a package holds each
/// once, in "plexo_players" at its top, where the pages of all its SCOs find it.
class PlexoSharedPlayer {
 public:
  /// Sees to it that the player of this kind stands in the course's working folder, from the install tree.
  /// One that can't be copied is reported as a problem, and nothing of it stays: the page then tells the
  /// learner, or shows the document in another way.
  static void CopySharedPlayer(PlexoWrapperKind kind);

  /// Deletes each player that no SCO of the course needs any more.
  static void RemoveUnusedPlayers();
};
