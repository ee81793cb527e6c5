// SPDX-License-Identifier: Apache-2.0
#include "host/kelpui/UI_NodeManager.h"

#include "host/kelpui/UI_Node.h"
#include "host/session/ITzUserInterface.h"
#include "host/session/TzSession.h"

namespace kelpui::controls {

UI_NodeManager& UI_NodeManager::Get() {
  static UI_NodeManager manager;
  return manager;
}

void UI_NodeManager::FireTimer(TimerKey key) {
  const auto timer = places.find(key);
  if (timer == places.end()) return;
  const auto [node, timerId] = timer->second;
  node->FireTimer(timerId);
}

void UI_NodeManager::StartTimer(UI_Node& node, double delay, std::uint32_t timerId) {
  StopTimer(node, timerId);
  const Place place(&node, timerId);
  timers[place] = ++lastKey;
  places[lastKey] = place;
  if (ITzUserInterface* ui = GetUserInterface(); ui != nullptr) ui->StartTimer(lastKey, delay);
}

void UI_NodeManager::StopTimer(UI_Node& node, std::uint32_t timerId) {
  if (const auto timer = timers.find({&node, timerId}); timer != timers.end()) Stop(timer);
}

void UI_NodeManager::StopTimers(UI_Node& node) {
  for (auto timer = timers.lower_bound({&node, 0}); timer != timers.end() && timer->first.first == &node;) {
    Stop(timer++);
  }
}

void UI_NodeManager::Stop(std::map<Place, TimerKey>::iterator timer) {
  const TimerKey key = timer->second;
  places.erase(key);
  timers.erase(timer);
  if (ITzUserInterface* ui = GetUserInterface(); ui != nullptr) ui->StopTimer(key);
}

}  // namespace kelpui::controls
