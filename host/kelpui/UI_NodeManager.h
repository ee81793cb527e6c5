// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <utility>

namespace kelpui::controls {

class UI_Node;

/// Knows the timers of all nodes. The session's user interface keeps the time: it is told of each timer's
/// start and stop, and calls `FireTimer` when one is due, between two events.
class UI_NodeManager {
 public:
  /// Names one running timer to the user interface; never given twice.
  using TimerKey = std::uint64_t;

  static UI_NodeManager& Get();

  /// A number that no timer had before; from 1.
  std::uint32_t GetUniqueTimerID() { return ++lastTimerId; }

  /// Fires the node's notifications. Nothing happens if the timer has been removed meanwhile.
  void FireTimer(TimerKey key);

  // For nodes.
  void StartTimer(UI_Node& node, double delay, std::uint32_t timerId);
  void StopTimer(UI_Node& node, std::uint32_t timerId);
  void StopTimers(UI_Node& node);

 private:
  using Place = std::pair<UI_Node*, std::uint32_t>;

  void Stop(std::map<Place, TimerKey>::iterator timer);

  std::uint32_t lastTimerId = 0;
  TimerKey lastKey = 0;
  std::map<Place, TimerKey> timers;
  std::map<TimerKey, Place> places;
};

}  // namespace kelpui::controls
