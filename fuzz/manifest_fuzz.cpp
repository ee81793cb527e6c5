// SPDX-License-Identifier: Apache-2.0
// The manifest of a SCO that an author adds, read for a course of either version.
#include "fuzz/FuzzFolder.h"
#include "intake/PlexoXMLParser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const TzPath file = FuzzFolder::Write("imsmanifest.xml", data, size);
  for (const char* version : {"1.2", "2004"}) {
    PlexoXMLParser parser(version);
    parser.setSource(TzFile(file));
    parser.parse();
    PlexoSCOManifest manifest;
    manifest.scoName = "kept";
    parser.CopyManifestTo(manifest);
    FuzzRequire(manifest.scoName == "kept", "a manifest doesn't rename its SCO");
    const bool isRefused = parser.GetFailureCode() != PlexoParseFailure::NONE;
    FuzzRequire(isRefused == parser.HasFailed(), "a failure has a code");
  }
  return 0;
}
