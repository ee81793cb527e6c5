// SPDX-License-Identifier: Apache-2.0
#include "shell/PlexoBrokerClient.h"

namespace {

void* boundAddressProc = nullptr;

}  // namespace

void AttachPlexoBrokerClient(void* addressProc) {
  if (addressProc != nullptr) boundAddressProc = addressProc;
}

void DetachPlexoBrokerClient() noexcept { boundAddressProc = nullptr; }

void* GetPlexoBrokerAddressProc() { return boundAddressProc; }
