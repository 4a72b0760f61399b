// The application put together: interface, delegate and controller over one set of services.
#pragma once

#include "app/ApplicationLibraryHost.h"
#include "app/ApplicationServices.h"
#include "app/Controller.h"
#include "app/MainInterface.h"
#include "app/lanternAppDelegate.h"

namespace clipwave {

class ClipwaveProgram {
 public:
  // Installs the delegate; the library is opened when it is first asked for.
  explicit ClipwaveProgram(const ApplicationServices& services)
      : services_(services),
        interface_(services),
        host_(services, interface_.channelController),
        delegate_(services, host_,
                  {interface_.mainWindow, interface_.vodcastController, interface_.channelController,
                   interface_.imageController}),
        controller_(services, delegate_, interface_) {
    services_.application.setDelegate(&delegate_);
  }
  ~ClipwaveProgram() { services_.application.setDelegate(nullptr); }
  ClipwaveProgram(const ClipwaveProgram&) = delete;
  ClipwaveProgram& operator=(const ClipwaveProgram&) = delete;

  const ApplicationServices& services() const { return services_; }
  lanternAppDelegate& delegate() { return delegate_; }
  Controller& controller() { return controller_; }
  MainInterface& interface() { return interface_; }

 private:
  ApplicationServices services_;
  MainInterface interface_;
  ApplicationLibraryHost host_;
  lanternAppDelegate delegate_;
  Controller controller_;
};

}  // namespace clipwave
