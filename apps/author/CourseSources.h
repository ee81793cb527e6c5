// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <map>
#include <optional>
#include <vector>

#include "apps/author/CourseScreen.h"
#include "host/files/TzPath.h"

/// Where in a module a file stands.
enum class CoursePlace { PreTest, Content, PostTest };

/// Which chosen file each row of the course stands for. The component reads a file once and shows its name; a
/// course that is to be saved needs the file.
///
/// A choice is noted when the file chooser answers, and settled when the component has done with it, by the
/// rows and names that came of it. From then on a file goes with its row, wherever that moves. UI thread
/// only.
class CourseSources {
 public:
  using Tree = CourseScreen::Tree;
  using Row = CourseScreen::Row;
  using RowPtr = kelpui::controls::UI_RowPtr;
  /// The file that the course holds for each name that it took; none where it holds nothing for it.
  using Placed = std::vector<std::optional<TzPath>>;

  struct ModuleFiles {
    std::optional<TzPath> preTest;
    std::vector<TzPath> content;
    std::optional<TzPath> postTest;
  };

  /// The screen has to outlive this.
  explicit CourseSources(const CourseScreen& courseScreen) : screen(&courseScreen) {}

  void NoteChosen(std::vector<TzPath> files) { chosen = std::move(files); }
  /// A file goes by another path to the component; answers name the file.
  void NoteStandIn(const TzPath& standIn, const TzPath& file) { standIns[standIn] = file; }
  /// The folder, or that of the file whose stand-in is in it.
  [[nodiscard]] TzPath FindOwnFolder(const TzPath& folder) const;
  /// The file that has the name, which is a folder's in the package, in the place to which the button adds;
  /// none if the name is free there.
  [[nodiscard]] std::optional<TzPath> FindHolder(const TzString& name,
                                                 const kelpui::controls::UI_Node* addButton) const;
  /// Finds out what became of the files chosen last. As long as nothing has, they stay unsettled.
  void Settle();
  [[nodiscard]] bool IsSettled() const { return chosen.empty(); }
  /// The same for a flat course, and for a place of one module, where it is known who asked.
  Placed SettleList();
  Placed SettleModule(const RowPtr& module, CoursePlace place);
  void Forget();

  /// None for a row that stands for no file.
  [[nodiscard]] std::optional<TzPath> GetFile(const RowPtr& row) const;
  [[nodiscard]] ModuleFiles GetModuleFiles(const RowPtr& module) const;

  /// The row below a module that has the header of the place with its button; the one after it shows the
  /// names. Null if the template has no such place.
  [[nodiscard]] static RowPtr GetHeader(const Row& module, CoursePlace place);
  [[nodiscard]] static RowPtr GetNames(const Row& module, CoursePlace place);

 private:
  struct Module {
    ModuleFiles files;
    /// As they were shown last, by place.
    std::array<TzString, 3> names;
    /// All that were ever added, by place: the component keeps the folders of what lost its slot.
    std::array<std::map<TzString, TzPath>, 3> added;
  };

  Placed Take(Module& module, CoursePlace place, const TzString& shown);
  /// The files in the place of the files that the component was given.
  void NameFiles(Placed& placed) const;

  const CourseScreen* screen;
  std::vector<TzPath> chosen;
  std::map<TzPath, TzPath> standIns;
  std::map<RowPtr, std::optional<TzPath>> rows;
  /// The rows of a flat course by the names of their folders; some may have been removed from it.
  std::map<TzString, RowPtr> rowsByName;
  std::map<RowPtr, Module> modules;
};
