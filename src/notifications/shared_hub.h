// The hub and the pulsar that the whole apartment shares.
#pragma once

#include "contract.h"

namespace vela {

ComPtr<_Notifications> sharedNotifications();
// Made before any other pulsar: the one whose ticks fire OnPulse.
ComPtr<_Pulsar> sharedPulsar();

}  // namespace vela
