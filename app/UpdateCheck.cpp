#include "app/UpdateCheck.h"

#include <algorithm>

#include "platform/foundation/PropertyList.h"

namespace clipwave {

namespace {

// How long the second reading may hold up the main thread.
constexpr Seconds kReadTimeout{5};

float versionNumber(const Value& value) {
  return static_cast<float>(value.doubleValue());
}

bool isASCII(std::string_view data) {
  return std::all_of(data.begin(), data.end(), [](unsigned char c) { return c < 0x80; });
}

}  // namespace

void UpdateCheck::URLResourceDidFinishLoading(std::string_view url) {
  const Dictionary& info = services_.bundle.infoDictionary();
  const auto own = info.find("CFBundleVersion");
  const float current = own != info.end() ? versionNumber(own->second) : 0;

  const auto data = services_.urls.dataWithContentsOfURL(url, kReadTimeout);
  if (!data || !isASCII(data->bytes)) return;
  const auto list = propertyListFromData(data->bytes);
  if (!list || list->kind() != Value::Kind::Dictionary) return;
  const Dictionary& announced = list->dictionaryValue();

  const auto version = announced.find("version");
  const float newest = version != announced.end() ? versionNumber(version->second) : 0;
  if (!(newest > current)) {
    services_.log.write("No Updates Available");
    return;
  }
  const auto page = announced.find("url");
  if (page == announced.end() || !page->second.isString() || page->second.stringValue().empty()) {
    services_.log.write("A newer version is announced without a page to download it from");
    return;
  }
  const std::string downloadURL(page->second.stringValue());
  Alert alert;
  alert.title = "There is an update available!";
  alert.message =
      "There is a new version available. Would you like to go to " + downloadURL + " and download it now?";
  alert.defaultButton = "Go to Website";
  alert.alternateButton = "Cancel";
  services_.application.beginAlertSheet(
      alert, services_.mainWindow,
      [this, downloadURL](Alert::Answer answer) { updateSheetDidEnd(answer, downloadURL); });
}

void UpdateCheck::URLResourceDidFailLoadingWithReason(std::string_view, std::string_view reason) {
  services_.log.write("Cannot check to see if there is an update  Reason:" + std::string(reason));
}

void UpdateCheck::updateSheetDidEnd(Alert::Answer answer, const std::string& downloadURL) {
  // The shell has ordered the alert's window out when it calls back.
  if (answer == Alert::Answer::Default) services_.workspace.openURL(downloadURL);
}

}  // namespace clipwave
