// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/PlexoCourseType.h"
#include "core/PlexoLinearCourseModel.h"
#include "core/PlexoModuleCourseModel.h"
#include "core/PlexoPublishStatus.h"
#include "host/session/TzFPFunctionArgumentList.h"
#include "host/sheets/TzSheet.h"
#include "host/sheets/TzSheetHandler.h"
#include "panel/IPlexoLinearCourseHandler.h"
#include "panel/IPlexoPreContentPostCourseHandler.h"
#include "panel/PlexoLinearCourseView.h"
#include "panel/PlexoPreContentPostCourseView.h"

/// The packager's panel: the screen with the template choice and the screens of the three course types, and
/// everything that the author's actions there do to the course.
///
/// Two ways lead into the course. The live one is the panel's sheet and its trees. The other takes named
/// commands from a player (`HandleStrobeCall`); where the two differ, both are meant so. UI thread only.
class PlexoView : public TzSheetHandler,
                  private IPlexoPreContentPostCourseHandler,
                  private IPlexoLinearCourseHandler {
 public:
  /// Shows the panel's first screen on the window.
  explicit PlexoView(TzWindowHandle window);
  ~PlexoView() override;
  PlexoView(const PlexoView&) = delete;
  PlexoView& operator=(const PlexoView&) = delete;

  // Of the sheet: what the buttons do, and the size of the screen. The buttons' results say whether the
  // action is one of the panel's.
  bool OnButton(const TzString& action, const TzVariant& value, TzSheet* sheet) override;
  void OnEveCanvasResize(const TzRect& size, TzSheet* sheet) override;

  /// Runs a named command of a player and appends the command's reply, if it has one, to `reply`: one
  /// `string` element whose value isn't escaped. Always true, also for a name that isn't a command's.
  virtual bool HandleStrobeCall(const TzFPFunctionArgumentList& call, TzString& reply);

  /// The modules that the panel edits; null until it is given them. Not owned.
  void SetModuleCourse(PlexoModuleCourseModel* course) { moduleCourse = course; }

  /// Whether the course may go to the publish dialog.
  [[nodiscard]] PlexoPublishStatus CheckPublishStatus() const { return GetPublishStatus(); }

  /// Gives the panel this size; does nothing while there is no panel.
  static void ResizePanel(TzReal width, TzReal height);
  /// Lays the panel out anew in the window that it stands in, whatever the rectangle.
  void SetPanelSize(const TzRect& size);

  /// Back to the first screen: empties the trees and the course's list, clears the dirty mark and the
  /// version. What was staged stays until the next course begins.
  void ReturnToTemplateChoice();
  /// Empties the course's list; the trees keep their rows.
  void ClearCourseViews();
  /// Stores nothing: a place for a host that shows the course's name.
  void SetCourseNameHint(const TzString& /*title*/) {}
  void SetScormVersionLabel(const TzString& version);

  /// Shows a box with an OK button and these texts as they are.
  static void ShowErrorBox(const TzString& title, const TzString& text);

  /// Opens the dialog of the course's details, which empties the course on OK and throws it away on Cancel.
  static void ShowCourseManifestDialog();

 private:
  friend class PlexoStrobeCommands;

  struct Template;

  // Of the module trees.
  void OnModuleAdded(const TzString& key, const TzString& title) override;
  void OnAddPreTest(const TzString& key) override;
  void OnAddPostTest(const TzString& key) override;
  void OnAddContent(const TzString& key) override;
  void OnModuleRemoved(const TzString& key) override;
  void OnReserved1(const TzString& /*key*/, const TzString& /*text*/) override {}
  void OnReserved2(const TzString& /*key*/, const TzString& /*text*/) override {}
  void OnReserved3(const TzString& /*key*/, const TzString& /*text*/) override {}
  void OnModuleTitleChanged(const TzString& key, const TzString& title) override;
  void OnWeightageChanged(const TzString& key, double fraction) override;
  void OnContentForcedSequenceChanged(const TzString& key, bool forced) override;
  void OnModulesSwapped(std::int32_t from, std::int32_t to) override { SwapModules(from, to); }
  void OnSelectionChanged() override { UpdateSelectionCells(); }

  // Of the flat list.
  void OnLinearSCOsSwapped(std::int32_t from, std::int32_t to) override;
  void OnLinearSCOsRemoved(const std::vector<int>& indices) override;
  void OnLinearSelectionChanged() override { UpdateSelectionCells(); }

  // What the buttons do.
  void ChooseTemplate(const Template& chosen);
  void AddFiles();
  void AddModule();
  void MoveSelection(bool up);
  void DeleteSelection();

  /// Opens the details of a course that has just begun, once the running event has ended.
  void OpenManifestDialogLater();
  void WatchCells();
  /// Enables the buttons under the list as the list and its selection are.
  void UpdateSelectionCells();

  [[nodiscard]] static const Template& GetCurrentTemplate();
  /// The place of a template's list on the screen; null if there is none.
  [[nodiscard]] kelpui::controls::UI_NodePtr FindPlace(const Template& ofTemplate) const;
  /// Puts a list that was just made into its place.
  static void Show(PlexoCourseTree& tree, kelpui::controls::UI_Node& place);
  /// The list of the course's template; null if it wasn't made yet.
  [[nodiscard]] PlexoCourseTree* GetCurrentTree() const;
  /// Likewise; null in a flat course.
  [[nodiscard]] PlexoPreContentPostCourseView* GetCurrentModuleView() const;

  /// The modules that the panel was given, else the process's.
  [[nodiscard]] PlexoModuleCourseModel& GetModules() const;
  void StoreCourseType(PlexoCourseType type);
  /// Of the flat course or of the modules, as the course's template has it.
  void SetForcedSequence(bool forced);
  /// Positions that don't exist leave the order as it is.
  void SwapModules(int first, int second);
  static void ClearModel();
  static TzString JoinNames(const std::vector<TzString>& names);

  TzWindowHandle parentWindow;
  /// Null until it is given; not owned.
  PlexoModuleCourseModel* moduleCourse = nullptr;
  /// Null until the flat template is chosen; not owned.
  PlexoLinearCourseModel* linearCourse = nullptr;
  std::unique_ptr<TzSheet> sheet;
  boost::intrusive_ptr<PlexoLinearCourseView> linearView;
  boost::intrusive_ptr<PlexoPreContentPostCourseView> preContentPostView;
  boost::intrusive_ptr<PlexoPreContentPostCourseView> contentPostView;
  std::uint32_t timerId = 0;
};

/// The process's panel. The first call with a window makes it there, and it is never destroyed; a call with
/// null gives the panel there is, or null.
PlexoView* GetPlexoView(TzWindowHandle parentWindow);
