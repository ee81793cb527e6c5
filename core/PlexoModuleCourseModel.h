// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <list>
#include <map>
#include <vector>

#include "core/PlexoCourseType.h"
#include "core/PlexoModuleModel.h"

/// The modules of a module course and the author's order of them. Getters copy; a change goes through a
/// setter.
///
/// Guarantee: the keys of the modules and of the order are the same, but for a module that `GetModule` made.
/// Setters for a key that isn't there make the module first, likewise outside the order.
class PlexoModuleCourseModel {
 public:
  using Modules = std::map<TzString, PlexoModuleModel>;

  PlexoModuleCourseModel() = default;
  PlexoModuleCourseModel(const PlexoModuleCourseModel&) = delete;
  PlexoModuleCourseModel& operator=(const PlexoModuleCourseModel&) = delete;

  /// Appends a module with default values under this key.
  void AddModule(const TzString& key, const TzString& title);
  /// Removes the module from the map and from the order, in about the logarithm of their number.
  void RemoveModule(const TzString& key);
  /// Exchanges the modules at two positions of the order, given either way round. Both must exist, as must
  /// all that the operations below name by an index: `std::logic_error`, with nothing changed, if one
  /// doesn't.
  void SwapModules(std::size_t first, std::size_t second);
  /// Exchanges two contents. Both must exist.
  void SwapContentSCOs(const TzString& key, std::size_t first, std::size_t second);

  void SetModuleTitle(const TzString& key, const TzString& title) { modules[key].title = title; }
  void SetContentForcedSequence(const TzString& key, bool forced);
  void SetAttempts(const TzString& key, const TzString& attempts) { modules[key].attempts = attempts; }
  void SetWeightage(const TzString& key, const TzString& weightage) { modules[key].weightage = weightage; }
  void SetPreTest(const TzString& key, const PlexoSCOModel& sco) { modules[key].preTest = sco; }
  void SetPostTest(const TzString& key, const PlexoSCOModel& sco) { modules[key].postTest = sco; }
  void AddContentSCO(const TzString& key, const PlexoSCOModel& sco) { modules[key].contents.push_back(sco); }

  /// Delete the SCO's folder from the disk and empty its slot.
  void RemovePreTest(const TzString& key);
  void RemovePostTest(const TzString& key);
  /// Deletes the folders of the contents at these indices, which ascend, count from before the removal and
  /// must all exist, and removes the contents.
  void RemoveContentSCOs(const TzString& key, const std::vector<int>& indices);

  /// The module under this key. An unknown key yields a fresh default module and leaves it in the map, out of
  /// the course's order: callers rely on never failing.
  PlexoModuleModel GetModule(const TzString& key) { return modules[key]; }
  /// The same without copying; the module stays there until it is removed.
  const PlexoModuleModel& ReadModule(const TzString& key) { return modules[key]; }
  [[nodiscard]] Modules GetModules() const { return modules; }
  [[nodiscard]] std::size_t CountModules() const { return modules.size(); }
  [[nodiscard]] std::vector<TzString> GetModuleOrder() const {
    return {moduleOrder.begin(), moduleOrder.end()};
  }
  /// A module that `GetModule` made doesn't count.
  [[nodiscard]] std::size_t CountOrderedModules() const { return moduleOrder.size(); }

  /// True if the weightages of all modules with a key, in the order of their keys, add up to exactly 1.0 in
  /// double precision. There is no tolerance.
  [[nodiscard]] bool HasValidTotalWeightage() const;

  /// Removes all modules; the flags keep their values.
  void Clear();

  /// Learners must take the modules in order.
  [[nodiscard]] bool GetModuleForcedSequence() const { return moduleForcedSequence; }
  void SetModuleForcedSequence(bool forced) { moduleForcedSequence = forced; }
  /// A copy of the course's template, set together with it.
  [[nodiscard]] PlexoCourseType GetCourseType() const { return courseType; }
  void SetCourseType(PlexoCourseType type) { courseType = type; }

 private:
  using Order = std::list<TzString>;

  Modules modules;
  Order moduleOrder;
  /// Where the keys stand in the order.
  std::multimap<TzString, Order::iterator> places;
  bool moduleForcedSequence = false;
  PlexoCourseType courseType = PlexoCourseType::LINEAR;
};

/// The process's module course, made on first use and never destroyed. UI thread only.
PlexoModuleCourseModel* GetModuleCourseModel();
