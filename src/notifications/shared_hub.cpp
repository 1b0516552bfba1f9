#include "notifications/shared_hub.h"

#include "notifications/Notifications.h"
#include "notifications/Pulsar.h"
#include "runtime/shared_instances.h"

namespace vela {

ComPtr<_Notifications> sharedNotifications() {
    return sharedInstance<_Notifications>([] { return make<Notifications>(); });
}

ComPtr<_Pulsar> sharedPulsar() {
    return sharedInstance<_Pulsar>([] { return make<Pulsar>(); });
}

}  // namespace vela
