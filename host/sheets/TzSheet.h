// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "host/files/TzResource.h"
#include "host/sheets/TzCanvas.h"
#include "host/sheets/TzDataModel.h"
#include "host/sheets/TzLayoutSheet.h"
#include "host/sheets/TzSheetHandler.h"

/// A pair of sheets at work: the cells of the property sheet, and a canvas that shows the layout sheet.
class TzSheet {
 public:
  /// The sheets are the library's resources of these numbers. A sheet that is missing or broken is a
  /// `std::logic_error`. The handler has to outlive the sheet; it is null where nobody listens.
  TzSheet(TzSheetHandler* sheetHandler, const TzResourceInfo& library, TzSheetResourceLoader imageLoader,
          int propertySheet, int layoutSheet);
  ~TzSheet();
  TzSheet(const TzSheet&) = delete;
  TzSheet& operator=(const TzSheet&) = delete;

  /// Shows the sheet on a window. Null without a user interface.
  TzCanvas* CreateDlgCanvasOnView(TzWindowHandle window);
  /// The same anywhere.
  TzCanvas* CreateCanvas(const TzCanvasSpec& spec);
  /// Null as long as none was made.
  [[nodiscard]] TzCanvas* GetCanvas() const { return canvas.get(); }
  void CloseCanvas();

  [[nodiscard]] TzDataModel& GetDataModel() { return model; }

  /// Sets the cell; views and watchers learn of it at once with `update`, otherwise with the next update.
  void SetCellValue(const TzString& cell, const TzVariant& value, bool update);

  // A cell that the sheet lacks, or that holds another kind of value, is a std::logic_error.
  [[nodiscard]] bool GetBool(const TzString& cell) const;
  [[nodiscard]] std::int64_t GetInteger(const TzString& cell) const;
  [[nodiscard]] double GetDouble(const TzString& cell) const;
  [[nodiscard]] TzString GetString(const TzString& cell) const;

 private:
  [[nodiscard]] TzVariant Read(const TzString& cell, TzVariant::Kind kind) const;

  TzSheetHandler* handler;
  TzSheetResourceLoader loader;
  TzDataModel model;
  TzLayoutSheet layout;
  TzCanvasPtr canvas;
};
