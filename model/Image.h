// A channel's artwork: a title and the URL where the picture is found.
#pragma once

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

// Keys: "title", "url". No behaviour of its own.
class Image final : public ManagedObject {
 public:
  using ManagedObject::ManagedObject;
};

}  // namespace clipwave
