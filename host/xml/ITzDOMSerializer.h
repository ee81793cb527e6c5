// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/text/TzString.h"

/// Takes a document's text from `TzXMLDOMCreator::Serialize`, piece by piece in order.
class ITzDOMSerializer {
 public:
  virtual ~ITzDOMSerializer() = default;
  virtual void Write(const TzString& text) = 0;
};
