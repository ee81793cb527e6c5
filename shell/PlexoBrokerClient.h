// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Binds the component to the host's interface broker through its address procedure. Null: nothing happens.
void AttachPlexoBrokerClient(void* addressProc);

/// Lets go of the broker; nothing happens if there is none.
void DetachPlexoBrokerClient() noexcept;

/// The procedure attached; null where there is none.
void* GetPlexoBrokerAddressProc();
