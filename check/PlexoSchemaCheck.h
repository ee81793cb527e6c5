// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "check/PlexoCheckedPackage.h"
#include "check/PlexoFindingList.h"
#include "host/files/TzPath.h"

/// The manifest against the published schema documents of its edition.
///
/// Runs after the checks of the manifest's content: what the schema says about an element that has a finding
/// already is left out, for the finding tells it in better words.
class PlexoSchemaCheck {
 public:
  /// `manifest` is the document, unpacked; `schemaFolder` holds "1_2/static" and "2004/static/3rd".
  static void Run(const PlexoCheckedPackage& package, const TzPath& manifest, const TzPath& schemaFolder,
                  PlexoFindingList& findings);
};
