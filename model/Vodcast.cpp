#include "model/Vodcast.h"

#include <algorithm>
#include <limits>

#include "model/Channel.h"
#include "model/FeedURL.h"
#include "model/MediaText.h"
#include "model/OneUndoStep.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {
namespace {

// What belongs to one movie file: where it is, and what was read from it.
constexpr std::array<std::string_view, 7> kFileKeys = {
    "alias", "vcPath", "movie", "size", "mediaSizeString", "mediaSizeUnit", "mediaTimeString"};
constexpr std::size_t kAliasPosition = 0;
constexpr std::size_t kPathPosition = 1;

}  // namespace

void Vodcast::awakeFromInsert() {
  setValue("vcPublishDate", host_.clock().now());
  if (ManagedObject* channel = host_.selectedChannel())
    setValue("vcAuthor", channel->primitiveValue("vcAuthor"));
}

Value Vodcast::vcPath() {
  const Value path = primitiveValue("vcPath");
  const Value alias = primitiveValue("alias");
  if (!alias.isNull()) {
    const auto resolved = host_.aliases().resolveAlias(alias.dataValue());
    if (!resolved) return "";
    if (resolved->updatedAlias) {
      setPrimitiveValue("alias", Value::data(*resolved->updatedAlias), ChangeKind::FilledValue);
    }
    return resolved->path;
  }
  if (path.isString() && host_.files().fileExistsAtPath(path.stringValue())) {
    if (const auto made = aliasOfFile(path.stringValue())) {
      setPrimitiveValue("alias", *made, ChangeKind::FilledValue);
    }
  }
  return path;
}

std::optional<Value> Vodcast::aliasOfFile(std::string_view path) {
  const auto made = host_.aliases().newAlias(path);
  if (made) return Value::data(*made);
  host_.log().write("FSPathMakeRef error " + std::to_string(made.error().code));
  return std::nullopt;
}

void Vodcast::setVcPath(const Value& path) {
  std::optional<Value> alias;
  if (path.isString() && host_.files().fileExistsAtPath(path.stringValue())) {
    alias = aliasOfFile(path.stringValue());
  }
  FileValues values = fileValues();
  values[kPathPosition] = path;
  if (alias) values[kAliasPosition] = *alias;
  storeFile(values);
}

Vodcast::FileValues Vodcast::fileValues() const {
  FileValues values;
  std::transform(kFileKeys.begin(), kFileKeys.end(), values.begin(),
                 [this](std::string_view key) { return primitiveValue(key); });
  return values;
}

// Undo, too, puts the alias in place before anyone is told of the path, for the alias decides what it reads
// as; and what was read from the file that goes, no undo step itself, goes with it.
void Vodcast::storeFile(const FileValues& values) {
  const FileValues old = fileValues();
  if (values != old) {
    const auto change = [&] {
      for (std::size_t i = 0; i < values.size(); ++i) {
        const auto kind = kFileKeys[i] == "movie" ? ChangeKind::Unrecorded : ChangeKind::Edit;
        setPrimitiveValue(kFileKeys[i], values[i], kind, false);
      }
    };
    performAsOneUndoStep(*this, change,
                         [old](ManagedObject& record) { static_cast<Vodcast&>(record).storeFile(old); });
  }
  if (!(values[kAliasPosition] == old[kAliasPosition])) didChangeValue("alias");
  didChangeValue("vcPath");
}

std::shared_ptr<Movie> Vodcast::heldMovie() const {
  return std::dynamic_pointer_cast<Movie>(primitiveValue("movie").handleValue());
}

std::shared_ptr<Movie> Vodcast::movie() {
  if (auto held = heldMovie()) return held;
  const Value path = vcPath();
  if (path.stringValue().empty()) return nullptr;
  auto opened = host_.movies().movieWithPath(path.stringValue());
  if (opened) setPrimitiveValue("movie", std::shared_ptr<Handle>(opened), ChangeKind::Unrecorded);
  return opened;
}

std::string Vodcast::vcDuration() {
  const auto held = heldMovie();
  return held ? durationText(held->duration()) : "";
}

std::optional<std::string> Vodcast::mediaTimeString() {
  if (const auto stored = primitiveValue("mediaTimeString").optionalString()) return stored;
  if (!movie()) return std::nullopt;
  const std::string duration = vcDuration();
  setPrimitiveValue("mediaTimeString", duration, ChangeKind::FilledValue);
  return duration;
}

std::int64_t Vodcast::size() {
  if (primitiveValue("size").isNull()) {
    const auto bytes = trueFileSize();
    // Nothing is kept while there is no file: the one that is attached next is to be measured.
    if (!bytes) return 0;
    const std::int64_t lowBits = static_cast<std::int32_t>(*bytes);
    setPrimitiveValue("size", lowBits, ChangeKind::FilledValue, false);
  }
  return static_cast<std::int32_t>(primitiveValue("size").integerValue());
}

void Vodcast::setSize(const Value& bytes) {
  const std::int64_t lowBits = static_cast<std::int32_t>(bytes.integerValue());
  setPrimitiveValue("size", bytes.isNull() ? Value() : Value(lowBits));
}

std::optional<std::int64_t> Vodcast::trueFileSize() {
  const Value path = vcPath();
  if (path.stringValue().empty()) return std::nullopt;
  const auto attributes = host_.files().fileAttributesAtPath(path.stringValue(), true);
  if (!attributes) return std::nullopt;
  return attributes->size;
}

std::int64_t Vodcast::sizeToShow() {
  const std::int64_t bytes = size();
  const auto whole = trueFileSize();
  const bool cutOff = whole && *whole > std::numeric_limits<std::int32_t>::max() &&
                      static_cast<std::int32_t>(*whole) == bytes;
  return cutOff ? *whole : bytes;
}

std::optional<std::string> Vodcast::mediaSizeUnit() {
  std::optional<std::string> unit;
  if (movie()) unit = sizeUnit(sizeToShow());
  if (!(primitiveValue("mediaSizeUnit") == Value(unit))) {
    setPrimitiveValue("mediaSizeUnit", unit, ChangeKind::FilledValue, false);
  }
  return unit;
}

void Vodcast::setMediaSizeUnit(const Value& unit) {
  setPrimitiveValue("mediaSizeUnit", unit);
  updateSize();
}

// A text that is stored empty stands for the movie that was not there yet; once there is one, it is measured.
std::string Vodcast::mediaSizeString() {
  const Value& stored = primitiveValue("mediaSizeString");
  if (!stored.stringValue().empty()) return std::string(stored.stringValue());
  const std::string text = movie() ? sizeText(sizeToShow()) : "";
  if (!(primitiveValue("mediaSizeString") == Value(text))) {
    setPrimitiveValue("mediaSizeString", text, ChangeKind::FilledValue, false);
  }
  return text;
}

void Vodcast::setMediaSizeString(const Value& text) {
  setPrimitiveValue("mediaSizeString", text);
  updateSize();
}

void Vodcast::updateSize() {
  const std::string unit = mediaSizeUnit().value_or("");
  setValue("size", static_cast<std::int64_t>(bytesFromText(mediaSizeString(), unit)));
}

std::string Vodcast::movieInfo() {
  return heldMovie() ? movieInfoText(vcDuration(), trueFileSize().value_or(0)) : "";
}

std::optional<std::string> Vodcast::timezone() {
  if (primitiveValue("timezone").isNull() && !primitiveValue("vcPublishDate").isNull()) {
    const std::string name = TimeZone::defaultTimeZone().name();
    setPrimitiveValue("timezone", name, ChangeKind::FilledValue, false);
  }
  return primitiveValue("timezone").optionalString();
}

std::optional<std::string> Vodcast::mediaURL() {
  if (const auto stored = primitiveValue("mediaURL").optionalString()) return stored;
  const Channel* channel = parent();
  const auto url = channel ? channel->primitiveValue("vcURL").optionalString() : std::nullopt;
  if (!url) return std::nullopt;
  return escapedURL(*url);
}

std::optional<std::string> Vodcast::mediaFilename() {
  if (const auto stored = primitiveValue("mediaFilename").optionalString()) return stored;
  const auto path = vcPath().optionalString();
  if (!path) return std::nullopt;
  return lastPathComponent(*path);
}

std::optional<std::string> Vodcast::mediaFullURL() {
  const auto url = mediaURL();
  const auto filename = mediaFilename();
  if (!url || !filename) return std::nullopt;
  return *url + "/" + *filename;
}

Channel* Vodcast::parent() const {
  return static_cast<Channel*>(relatedObject("parent"));
}

}  // namespace clipwave
