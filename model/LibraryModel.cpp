#include "model/LibraryModel.h"

#include <string>
#include <utility>
#include <vector>

#include "model/Channel.h"
#include "model/ChannelNumbering.h"
#include "model/Image.h"
#include "model/Vodcast.h"

namespace clipwave {
namespace {

using Properties = std::vector<PropertyDescription>;
constexpr auto kStored = Storage::Stored;
constexpr auto kDerived = Storage::Derived;

PropertyDescription string(std::string name) {
  return {.name = std::move(name)};
}
PropertyDescription indexedString(std::string name) {
  return {.name = std::move(name), .indexed = true};
}
PropertyDescription boolean(std::string name, bool defaultValue) {
  return {.name = std::move(name), .type = PropertyType::Boolean, .defaultValue = defaultValue};
}
PropertyDescription date(std::string name) {
  return {.name = std::move(name), .type = PropertyType::Date};
}

// The accesses by key that go through a record's own operation.
template <class Record, auto operation>
Value get(ManagedObject& record) {
  return Value((static_cast<Record&>(record).*operation)());
}
template <class Record, auto operation>
void set(ManagedObject& record, const Value& value) {
  (static_cast<Record&>(record).*operation)(value);
}
template <class Record, auto operation>
Validation validate(ManagedObject& record, Value& proposed) {
  return (static_cast<Record&>(record).*operation)(proposed);
}

Value movieOf(ManagedObject& record) {
  return std::static_pointer_cast<Handle>(static_cast<Vodcast&>(record).movie());
}

PropertyDescription withAccess(std::string name, PropertyType type, Storage storage,
                               PropertyDescription::Getter getter,
                               PropertyDescription::Setter setter = nullptr) {
  return {.name = std::move(name), .type = type, .storage = storage, .getter = getter, .setter = setter};
}

void addFlags(Properties& properties, const std::string& prefix, int last) {
  for (int number = 1; number <= last; ++number) {
    properties.push_back(boolean(prefix + std::to_string(number), false));
  }
}

Properties channelProperties() {
  Properties p;
  p.push_back(
      {.name = "vcTitle", .indexed = true, .validator = validate<Channel, &Channel::validateVcTitle>});
  p.push_back(indexedString("filename"));
  p.push_back({.name = "vcURL", .indexed = true, .setter = set<Channel, &Channel::setVcURL>});
  p.push_back(string("websiteURL"));
  p.push_back(string("mediaPath"));
  p.push_back({.name = "protocolTag", .type = PropertyType::Integer32});
  p.push_back(string("vcAuthor"));
  p.push_back(
      withAccess("itunesAuthor", PropertyType::String, kStored, get<Channel, &Channel::itunesAuthor>));
  for (const char* name : {"ownerName", "vcEmail", "language", "copyright"}) p.push_back(string(name));
  p.push_back({.name = "image",
               .type = PropertyType::ToOne,
               .destination = std::string(kImageEntity),
               .inverse = "channels"});
  p.push_back(boolean("block", false));
  p.push_back(boolean("vcExplicit", false));
  for (const char* name :
       {"vcCategory", "subCategory", "keywords", "vcSubtitle", "vcSummary", "managingEditor", "webMaster"}) {
    p.push_back(string(name));
  }
  p.push_back(date("lastBuildDate"));
  for (const char* name : {"generator", "docs", "ttl"}) p.push_back(string(name));
  addFlags(p, "skipDay", 7);
  addFlags(p, "skipHour", 23);
  p.push_back(boolean("useStylesheet", false));
  p.push_back(string("stylesheetURL"));
  p.push_back(boolean("vcPublish", true));
  p.push_back({.name = "children",
               .type = PropertyType::ToMany,
               .destination = std::string(kVodcastEntity),
               .inverse = "parent",
               .deleteRule = DeleteRule::Cascade});
  p.push_back(
      withAccess("canEditURLs", PropertyType::Boolean, kDerived, get<Channel, &Channel::canEditURLs>));
  p.push_back(withAccess("pathIcon", PropertyType::String, kDerived, get<Channel, &Channel::pathIcon>));
  return p;
}

// The values that come from the movie file or lead to it.
void addMediaProperties(Properties& p) {
  constexpr auto kString = PropertyType::String;
  p.push_back(withAccess("vcPath", kString, kStored, get<Vodcast, &Vodcast::vcPath>,
                         set<Vodcast, &Vodcast::setVcPath>));
  p.push_back({.name = "alias", .type = PropertyType::Binary});
  p.push_back(withAccess("movie", PropertyType::Handle, Storage::Transient, movieOf));
  p.push_back(withAccess("size", PropertyType::Integer32, kStored, get<Vodcast, &Vodcast::size>,
                         set<Vodcast, &Vodcast::setSize>));
  p.push_back(withAccess("mediaSizeString", kString, kStored, get<Vodcast, &Vodcast::mediaSizeString>,
                         set<Vodcast, &Vodcast::setMediaSizeString>));
  p.push_back(withAccess("mediaSizeUnit", kString, kStored, get<Vodcast, &Vodcast::mediaSizeUnit>,
                         set<Vodcast, &Vodcast::setMediaSizeUnit>));
  p.push_back(withAccess("mediaTimeString", kString, kStored, get<Vodcast, &Vodcast::mediaTimeString>));
  p.push_back(withAccess("vcDuration", kString, kDerived, get<Vodcast, &Vodcast::vcDuration>));
  p.push_back(withAccess("movieInfo", kString, kDerived, get<Vodcast, &Vodcast::movieInfo>,
                         [](ManagedObject& record, const Value&) { record.didChangeValue("movieInfo"); }));
  p.push_back(withAccess("mediaURL", kString, kStored, get<Vodcast, &Vodcast::mediaURL>));
  p.push_back(withAccess("mediaFilename", kString, kStored, get<Vodcast, &Vodcast::mediaFilename>));
  p.push_back(withAccess("mediaFullURL", kString, kDerived, get<Vodcast, &Vodcast::mediaFullURL>));
}

Properties vodcastProperties() {
  Properties p;
  p.push_back(string("vcTitle"));
  p.push_back(date("vcPublishDate"));
  p.push_back(withAccess("timezone", PropertyType::String, kStored, get<Vodcast, &Vodcast::timezone>));
  for (const char* name : {"vcAuthor", "vcEmail", "vcDescription", "vcSubtitle", "vcSummary", "comments",
                           "keywords", "vcCategory", "subCategory"}) {
    p.push_back(string(name));
  }
  p.push_back(boolean("vcExplicit", false));
  p.push_back(boolean("block", false));
  p.push_back(boolean("vcPublish", true));
  p.push_back(boolean("vcCopy", true));
  addMediaProperties(p);
  p.push_back({.name = "parent",
               .type = PropertyType::ToOne,
               .destination = std::string(kChannelEntity),
               .inverse = "children"});
  return p;
}

// "channels" only keeps both ends in step when an image is deleted.
Properties imageProperties() {
  return {indexedString("title"),
          indexedString("url"),
          {.name = "channels",
           .type = PropertyType::ToMany,
           .destination = std::string(kChannelEntity),
           .inverse = "image"}};
}

void addChannelEntity(ManagedObjectModel& model, LibraryHost& host) {
  const auto numbering = std::make_shared<ChannelNumbering>();
  auto& channel = model.addEntity(std::make_unique<EntityDescription>(
      std::string(kChannelEntity),
      [&host, numbering](const EntityDescription& entity) {
        return std::make_shared<Channel>(entity, host, *numbering);
      },
      channelProperties()));
  channel.setDependentKeys("canEditURLs", {"protocolTag"});
  channel.setDependentKeys("pathIcon", {"protocolTag"});
}

void addVodcastEntity(ManagedObjectModel& model, LibraryHost& host) {
  auto& vodcast = model.addEntity(std::make_unique<EntityDescription>(
      std::string(kVodcastEntity),
      [&host](const EntityDescription& entity) { return std::make_shared<Vodcast>(entity, host); },
      vodcastProperties()));
  for (const char* derived : {"movie", "mediaSizeString", "mediaSizeUnit", "mediaTimeString", "mediaURL",
                              "mediaFilename", "size"}) {
    vodcast.setDependentKeys(derived, {"vcPath"});
  }
  vodcast.setDependentKeys("movieInfo", {"vcPath", "movie"});
  vodcast.setDependentKeys("mediaFullURL", {"mediaURL", "mediaFilename", "vcPath"});
}

}  // namespace

std::unique_ptr<ManagedObjectModel> makeLibraryModel(LibraryHost& host) {
  auto model = std::make_unique<ManagedObjectModel>();
  addChannelEntity(*model, host);
  addVodcastEntity(*model, host);
  model->addEntity(std::make_unique<EntityDescription>(
      std::string(kImageEntity),
      [](const EntityDescription& entity) { return std::make_shared<Image>(entity); }, imageProperties()));
  model->setFetchRequestTemplate(kFetchImages, {.entityName = std::string(kImageEntity), .key = "url"},
                                 "URL");
  model->setFetchRequestTemplate(
      kDefaultURLFetch,
      {.entityName = std::string(kChannelEntity), .key = "vcURL", .value = kPlaceholderURL});
  return model;
}

}  // namespace clipwave
