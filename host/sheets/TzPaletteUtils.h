// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/files/TzResource.h"
#include "host/sheets/TzCanvas.h"
#include "host/sheets/TzDataModel.h"

/// Makes the two halves of a sheet one by one, for bars and palettes that have no handler. A broken sheet is
/// a `TzSheetError`.
class TzPaletteUtils {
 public:
  /// Null without a resource.
  static std::unique_ptr<TzDataModel> CreateAdamSheet(const TzResource* propertySheet);
  /// Shown on the application bar. Null without a resource or a user interface. The model outlives the canvas
  /// or its binding.
  static TzCanvasPtr CreateCanvas(const TzResource* layoutSheet, TzDataModel& model,
                                  const TzActionCallback& action, const TzSheetResourceLoader& loader);
};
