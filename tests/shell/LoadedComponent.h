// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "shell/ITzComponent.h"
#include "support/TestSession.h"

/// The library as a host loads it. Each object loads a library of its own, with a panel and a course that
/// nobody has used; it stays in the process, as a host's does.
class LoadedComponent {
 public:
  LoadedComponent();

  /// One of its functions by its name; null if it exports none.
  template <typename Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(FindSymbol(name));
  }

  ITzComponent* operator->() const { return component; }

  /// The file that is loaded.
  static const std::string& GetFile();

 private:
  [[nodiscard]] void* FindSymbol(const char* name) const;

  TestFolder folder;
  void* library = nullptr;
  ITzComponent* component = nullptr;
};
