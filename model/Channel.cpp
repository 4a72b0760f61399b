#include "model/Channel.h"

#include <set>

#include "model/ChannelNumbering.h"
#include "model/LibraryModel.h"
#include "model/OneUndoStep.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {
namespace {

constexpr std::string_view kNewChannelKeys[] = {"vcTitle",      "filename",  "vcURL",      "vcAuthor",
                                                "itunesAuthor", "ownerName", "websiteURL", "language",
                                                "mediaPath",    "copyright", "protocolTag"};

std::string copyrightText(int year, const std::optional<std::string>& author) {
  const std::string text = "Copyright " + std::to_string(year);
  return author ? text + " " + *author : text;
}

std::vector<std::pair<std::string_view, Value>> dotMacValues(const DotMacMember& member,
                                                             std::string_view title) {
  const std::string site = member.homePageBaseURL + member.name;
  return {{"vcURL", site + "/clipwave/" + std::string(title)},
          {"websiteURL", site},
          {"mediaPath", stringByAppendingPathComponent("/Sites/clipwave", title)}};
}

void announceMediaURLs(Channel& channel) {
  // A copy: an observer may move or delete episodes.
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const std::vector<ManagedObject*> episodes = channel.relatedObjects("children");
  for (ManagedObject* episode : episodes) {
    if (episode->primitiveValue("mediaURL").isNull()) episode->didChangeValue("mediaURL");
  }
}

}  // namespace

void Channel::awakeFromInsert() {
  UndoManager& undoManager = managedObjectContext()->undoManager();
  const UndoManager::GroupID insertion = undoManager.openGroup();
  host_.runLoop().performLater([weak = weak_from_this(), insertion] {
    const auto alive = weak.lock();
    ManagedObjectContext* context = alive ? alive->managedObjectContext() : nullptr;
    if (!context) return;
    auto& channel = static_cast<Channel&>(*alive);
    context->undoManager().performInGroup(insertion, [&channel] { channel.activateDefaults(); });
  });
}

void Channel::activateDefaults() {
  std::set<std::string_view> kept;
  for (const std::string_view key : kNewChannelKeys) {
    if (!primitiveValue(key).isNull()) kept.insert(key);
  }
  const auto setUnlessKept = [this, &kept](std::string_view key, const Value& value) {
    if (!kept.contains(key) && !value.isNull()) setValue(key, value);
  };

  for (const auto& [key, value] : newChannelValues()) setUnlessKept(key, value);
  if (!relatedObject("image")) {
    if (ManagedObject* image = defaultImage()) setValue("image", image);
  }
  const int year = calendarYear(host_.clock().now(), TimeZone::defaultTimeZone());
  setUnlessKept("copyright", copyrightText(year, host_.defaults().value("defaultAuthor").optionalString()));
  if (const auto member = host_.dotMacMember()) {
    const std::string title(primitiveValue("vcTitle").stringValue());
    for (const auto& [key, value] : dotMacValues(*member, title)) setUnlessKept(key, value);
    setUnlessKept("protocolTag", kDotMacMethod);
  } else {
    setUnlessKept("protocolTag", kFolderMethod);
  }
  host_.notifications().post(kProtocolDidChange, this);
}

std::vector<Channel::KeyValue> Channel::newChannelValues() {
  const Value author = host_.defaults().value("defaultAuthor").optionalString();
  const Value language = host_.defaults().value("defaultLanguage").optionalString();
  const std::string prefix = host_.defaults().string("defaultFilename");
  const std::string site = "http://" + host_.process().hostName() + "/~" + host_.process().userName();
  const int number = numbering_.numberFor(*this, prefix);
  const std::string title = numberedChannelTitle(number);
  return {{"vcTitle", title},
          {"filename", numberedFeedFileName(prefix, number)},
          {"vcURL", site + "/clipwave/" + title},
          {"vcAuthor", author},
          {"itunesAuthor", author},
          {"ownerName", author},
          {"websiteURL", site},
          {"language", language},
          {"mediaPath", host_.process().homeDirectory() + "/Sites/clipwave/" + title}};
}

ManagedObject* Channel::defaultImage() {
  const Value url = host_.defaults().value("defaultImageProperty");
  if (url.stringValue().empty()) return nullptr;
  ManagedObjectContext& context = *managedObjectContext();
  const auto request = context.managedObjectModel().fetchRequestFromTemplate(kFetchImages, {{"URL", url}});
  if (!request) return nullptr;
  const auto images = context.executeFetchRequest(*request);
  return images && !images->empty() ? images->front() : nullptr;
}

void Channel::setVcURL(const Value& url) {
  const Value old = primitiveValue("vcURL");
  if (!(url == old)) {
    performAsOneUndoStep(
        *this, [&] { setPrimitiveValue("vcURL", url, ChangeKind::Edit, false); },
        [old](ManagedObject& record) { static_cast<Channel&>(record).setVcURL(old); });
  }
  didChangeValue("vcURL");
  announceMediaURLs(*this);
}

std::optional<std::string> Channel::itunesAuthor() {
  const Value& own = primitiveValue("itunesAuthor");
  return own.isNull() ? primitiveValue("vcAuthor").optionalString() : own.optionalString();
}

bool Channel::canEditURLs() {
  return primitiveValue("protocolTag").integerValue() != kDotMacMethod;
}

std::string Channel::pathIcon() {
  return canEditURLs() ? "folder" : "dotmaclogo";
}

void Channel::setDotMacDefaultsWithNewTitle(std::string_view title) {
  const auto member = host_.dotMacMember();
  if (!member) return;
  for (const auto& [key, value] : dotMacValues(*member, title)) setValue(key, value);
}

void Channel::setDotMacDefaults() {
  setDotMacDefaultsWithNewTitle(primitiveValue("vcTitle").stringValue());
}

}  // namespace clipwave
