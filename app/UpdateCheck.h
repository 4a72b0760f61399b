// Looks whether a newer version of the application has been announced, and offers its page. Outlives the
// sheet in which it does.
#pragma once

#include <string>
#include <string_view>

#include "platform/appkit/Application.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/URLLoading.h"

namespace clipwave {

class UpdateCheck final : public URLLoadClient {
 public:
  struct Services {
    Application& application;
    Workspace& workspace;
    Bundle& bundle;
    Log& log;
    URLLoading& urls;
    Window& mainWindow;
  };
  explicit UpdateCheck(Services services) : services_(services) {}

  // Begins loading the version list in the background; everything else follows from its callbacks.
  void start(std::string_view updateURL) { load_ = services_.urls.loadInBackground(updateURL, *this); }

  void URLResourceDidFinishLoading(std::string_view url) override;
  void URLResourceDidFailLoadingWithReason(std::string_view url, std::string_view reason) override;
  void updateSheetDidEnd(Alert::Answer answer, const std::string& downloadURL);

 private:
  Services services_;
  Observation load_;
};

}  // namespace clipwave
