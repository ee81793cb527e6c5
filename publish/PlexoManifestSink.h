// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/xml/ITzDOMSerializer.h"

/// Collects a document's text.
class PlexoManifestSink : public ITzDOMSerializer {
 public:
  void Write(const TzString& piece) override { text += piece; }
  [[nodiscard]] TzString& GetText() { return text; }

 private:
  TzString text;
};
