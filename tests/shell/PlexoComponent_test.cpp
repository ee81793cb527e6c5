// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <set>
#include <string>

#include "host/files/TzFileUtil.h"
#include "shell/ITzComponent.h"
#include "support/TestSession.h"

using testing::ElementsAre;

namespace {

const std::string kLibrary = std::string(PLEXO_BIN) + "/libplexo.so";

/// The library as a host loads it, and its functions by name.
class LoadedLibrary {
 public:
  LoadedLibrary() : handle(dlopen(kLibrary.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) throw std::runtime_error(dlerror());
  }

  template <typename Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(dlsym(handle, name));
  }

  [[nodiscard]] ITzComponent* Component() const { return Find<ITzComponent*()>("GetPlexoUIComponent")(); }

 private:
  void* handle;
};

std::set<std::string> ExportedNames() {
  std::set<std::string> names;
  const std::string command = "nm -D --defined-only -C --format=posix " + kLibrary;
  FILE* output = popen(command.c_str(), "r");
  std::array<char, 4096> line{};
  while (fgets(line.data(), static_cast<int>(line.size()), output) != nullptr) {
    const std::string text = line.data();
    // "name type value size"; a demangled name holds blanks of its own.
    std::size_t end = text.size();
    for (int field = 0; field < 3; ++field) end = text.rfind(' ', end - 1);
    names.insert(text.substr(0, end));
  }
  pclose(output);
  return names;
}

}  // namespace

TEST(PlexoComponent, TheLibraryExportsWhatAHostCallsAndNothingElse) {
  EXPECT_THAT(ExportedNames(),
              ElementsAre("GetPlexoUIComponent", "InitializePlexoUI", "MyPdfKitTerm",
                          "PlexoUIUtils::ContinueProjectClosure()", "PlexoUIUtils::GetLangId()",
                          "PlexoUIUtils::GetPlexoUIUtils()", "PlexoUIUtils::PlexoUIUtils()",
                          "PlexoUIUtils::SetLangId(TzString const&)", "PlexoUIUtils::m_LangID",
                          "PlexoUIUtils::m_PlexoUIUtils", "PlexoUIUtils::operator=(PlexoUIUtils const&)",
                          "PlexoUIUtils::~PlexoUIUtils()", "TerminatePlexoUI"));
}

TEST(PlexoComponent, StartsAndStopsTheHostsFrameworkInItsOrder) {
  TestSession session;
  const LoadedLibrary library;
  ITzComponent* component = library.Component();
  ASSERT_EQ(component, library.Component());
  EXPECT_EQ(component->GetKind(), 49);

  EXPECT_EQ(component->Start(), 0);
  EXPECT_THAT(session.windows.GetCalls(),
              ElementsAre("RegisterApplicationClass PLEXOUI",
                          "CreateTopLevelWindow PLEXOUI plexoUI style cf0000 at default,300 size 650x500",
                          "InitHerder 101", "InitializeImageUtils without broker",
                          "SetApplicationName Plexo Packager", "StartRoost 1", "GetContainerWindow",
                          "SetParent container", "ShowWindow", "UpdateWindow"));

  const TzPath scratch = TzFileUtil::CreateTempDir("working");
  const std::size_t started = session.windows.GetCalls().size();
  EXPECT_EQ(component->Stop(), 0);
  EXPECT_FALSE(TzFile(scratch).Exists());
  const auto calls = session.windows.GetCalls();
  EXPECT_THAT(std::vector(calls.begin() + static_cast<std::ptrdiff_t>(started), calls.end()),
              ElementsAre("EndRoost 1", "UnInitHerder", "TerminateImageUtils", "TerminateAppUI"));
}

TEST(PlexoComponent, TheResultOfTheFrameworkIsThatOfTheFunctionsAndNotOfTheComponent) {
  TestSession session;
  const LoadedLibrary library;
  session.windows.SetRoostResult(kTzMachineFailure);
  EXPECT_EQ(library.Find<int()>("InitializePlexoUI")(), kTzMachineFailure);
  EXPECT_EQ(library.Find<int()>("TerminatePlexoUI")(), kTzMachineFailure);
  EXPECT_EQ(library.Component()->Start(), 0);
  EXPECT_EQ(library.Component()->Stop(), 0);
}

TEST(PlexoComponent, RegistersItsStringsInTheHostsDictionary) {
  TestSession session;
  const LoadedLibrary library;
  EXPECT_EQ(library.Component()->RegisterStrings(), 0);
  EXPECT_EQ(session.dictionary.GetDefaultCount(), 181U);
  TzSession withoutDictionary = TzSession::Current();
  withoutDictionary.dictionary = nullptr;
  TzSession::Install(withoutDictionary);
  EXPECT_EQ(library.Component()->RegisterStrings(), 1);
}

TEST(PlexoComponent, TheHostsBrokerReachesTheImageHelpers) {
  TestSession session;
  static int broker = 0;
  TzSession withBroker = TzSession::Current();
  withBroker.brokerAddressProc = []() -> void* { return &broker; };
  TzSession::Install(withBroker);
  const LoadedLibrary library;
  EXPECT_EQ(library.Component()->Start(), 0);
  EXPECT_THAT(session.windows.GetCalls(), testing::Contains("InitializeImageUtils with broker"));
  EXPECT_EQ(library.Component()->Stop(), 0);
}

TEST(PlexoComponent, StartsWithAHostThatOffersNothing) {
  TestSession session;
  TzSession::Install({});
  const LoadedLibrary library;
  EXPECT_EQ(library.Component()->Start(), 0);
  EXPECT_EQ(library.Component()->Stop(), 0);
}
