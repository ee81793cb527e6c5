// SPDX-License-Identifier: Apache-2.0
#include "apps/desktop/ComponentLibrary.h"

#include <dlfcn.h>

namespace {

using GetComponent = ITzComponent*();

std::string TakeProblem() {
  // Once asked, the system has forgotten it.
  const char* problem = dlerror();
  return problem != nullptr ? problem : "unknown reason";
}

}  // namespace

ComponentLibrary ComponentLibrary::Load(const TzPath& file) {
  void* library = dlopen(file.GetNative().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return {nullptr, TakeProblem()};
  auto* getComponent = reinterpret_cast<GetComponent*>(dlsym(library, "GetPlexoUIComponent"));
  if (getComponent == nullptr) return {nullptr, TakeProblem()};
  ITzComponent* component = getComponent();
  return {component, component != nullptr ? std::string() : "out of memory"};
}
