#include "app/ApplicationLibraryHost.h"

#include "platform/dotmac/MemberSettings.h"

namespace clipwave {

ManagedObject* ApplicationLibraryHost::selectedChannel() {
  const IndexSet& selected = channelController_.selectionIndexes();
  if (selected.size() != 1) return nullptr;
  return channelController_.arrangedObjects()[*selected.begin()];
}

std::optional<DotMacMember> ApplicationLibraryHost::dotMacMember() {
  const auto settings = MemberSettings::fromDefaults(services_.defaults);
  if (!settings) return std::nullopt;
  return DotMacMember{settings->name, settings->homePageBaseURL};
}

void ApplicationLibraryHost::showCriticalAlert(const std::string& title, const std::string& message) {
  services_.application.runCriticalAlertPanel(title, message, "OK");
}

std::string ApplicationLibraryHost::localizedString(const std::string& key, const std::string& table) {
  const Dictionary strings = services_.bundle.dictionaryForResource(table);
  const auto entry = strings.find(key);
  return entry != strings.end() && entry->second.isString() ? std::string(entry->second.stringValue()) : key;
}

}  // namespace clipwave
