// The desktop's secret service, where there is one. Internal to this room.
#pragma once

#include <memory>

#include "platform/dotmac/SecretStore.h"

namespace clipwave {

// The code of its errors where no service answers at all; any other is the service's own refusal.
inline constexpr int kNoSecretService = 1;

std::unique_ptr<SecretStore> makeSecretService();

}  // namespace clipwave
