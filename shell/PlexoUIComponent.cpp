// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoUIComponent.h"

#include <new>

#include "host/pdf/TzPdfKit.h"
#include "host/session/TzSession.h"
#include "panel/PlexoStrings.h"
#include "shell/PlexoBrokerClient.h"
#include "shell/PlexoExports.h"

namespace {

/// Starts the PDF library, once in the life of the process. 0 for success.
int InitializePdfKit() {
  static bool isDone = false;
  if (!isDone) TzPdfKit::Start();
  isDone = true;
  return 0;
}

}  // namespace

int PlexoUIComponent::Start() {
  InitializePdfKit();
  AttachPlexoBrokerClient(GetTzBrokerAddressProc());
  InitializePlexoUI();
  return 0;
}

int PlexoUIComponent::Stop() {
  MyPdfKitTerm();
  TerminatePlexoUI();
  DetachPlexoBrokerClient();
  return 0;
}

int PlexoUIComponent::RegisterStrings() { return RegisterDefaultStrings(); }

ITzComponent* GetPlexoUIComponent() {
  static auto* const component = new (std::nothrow) PlexoUIComponent;
  return component;
}

void MyPdfKitTerm() { TzPdfKit::Stop(); }
