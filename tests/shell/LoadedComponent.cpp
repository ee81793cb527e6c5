// SPDX-License-Identifier: Apache-2.0
#include "shell/LoadedComponent.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

// The loader knows a library by its file, so a copy of the file is another library.
LoadedComponent::LoadedComponent() {
  const std::string copy = (folder.Path() / "libplexo.so").GetNative();
  std::filesystem::copy_file(GetFile(), copy);
  library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  component = Find<ITzComponent*()>("GetPlexoUIComponent")();
}

void* LoadedComponent::FindSymbol(const char* name) const { return dlsym(library, name); }

const std::string& LoadedComponent::GetFile() {
  static const std::string file = std::string(PLEXO_BIN) + "/libplexo.so";
  return file;
}
