// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstddef>

namespace kelpui::controls {

/// Counts who holds it, and goes with the last of them. For `boost::intrusive_ptr`, which can be made from a
/// plain pointer at any time. UI thread only.
class UI_RefCounted {
 public:
  UI_RefCounted(const UI_RefCounted&) = delete;
  UI_RefCounted& operator=(const UI_RefCounted&) = delete;

 protected:
  UI_RefCounted() = default;
  virtual ~UI_RefCounted() = default;

 private:
  friend void intrusive_ptr_add_ref(const UI_RefCounted* object) { ++object->holders; }
  friend void intrusive_ptr_release(const UI_RefCounted* object) {
    if (--object->holders == 0) delete object;
  }

  friend class UI_KeepAlive;

  mutable std::size_t holders = 0;
};

/// Keeps an object for the length of one of its own operations, in which others may let go of it. An object
/// that nobody holds yet, as in its constructor, isn't deleted at the end.
class UI_KeepAlive {
 public:
  explicit UI_KeepAlive(const UI_RefCounted& kept) : object(kept), isHeld(kept.holders > 0) {
    ++object.holders;
  }
  ~UI_KeepAlive() {
    if (--object.holders == 0 && isHeld) delete &object;
  }
  UI_KeepAlive(const UI_KeepAlive&) = delete;
  UI_KeepAlive& operator=(const UI_KeepAlive&) = delete;

 private:
  const UI_RefCounted& object;
  bool isHeld;
};

}  // namespace kelpui::controls
