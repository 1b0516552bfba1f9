#include "notifications/shared.h"

#include "frame/shared_instances.h"
#include "notifications/Notifications.h"
#include "notifications/Pulsar.h"

namespace vela {

ComPtr<_Notifications> sharedNotifications() {
    return sharedInstance<_Notifications>([] { return make<Notifications>(); });
}

ComPtr<_Pulsar> sharedPulsar() {
    return sharedInstance<_Pulsar>([] { return make<Pulsar>(); });
}

}  // namespace vela
