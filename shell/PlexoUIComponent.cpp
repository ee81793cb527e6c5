// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoUIComponent.h"

#include <new>

#include "host/session/TzSession.h"
#include "panel/PlexoStrings.h"
#include "shell/PlexoBrokerClient.h"
#include "shell/PlexoExports.h"

int PlexoUIComponent::Start() {
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

// No PDF library has been started, so there is none to shut down.
void MyPdfKitTerm() {}
