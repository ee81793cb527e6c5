// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "host/pdf/TzPdfDocument.h"

/// The form fields through which the tracking scripts of a document exchange data with an LMS: eight hidden
/// text fields on its first page (PDF 32000-1, 12.7.3 and 12.7.4.3).
class PlexoPdfFields {
 public:
  /// Adds those that the document lacks. A form that it has stays, with its fields; a field of ours by name,
  /// whatever its kind, counts as there. Throws `TzPdfFailure`, for a document without pages too.
  static void AddMissing(TzPdfDocument& document);
};
