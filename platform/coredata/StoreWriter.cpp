// The writing half of the store's file format.
#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/StoreText.h"
#include "platform/coredata/XMLStore.h"
#include "platform/foundation/Base64.h"

namespace clipwave {

class StoreWriter {
 public:
  explicit StoreWriter(std::size_t expectedSize) { out_.reserve(expectedSize + expectedSize / 16); }

  std::string write(const StoreContent& content) {
    out_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<library";
    storetext::appendAttribute(out_, "version", versionFor(content));
    storetext::appendAttribute(out_, "next", std::to_string(content.nextObjectID));
    out_ += content.unknown.attributes;
    out_ += ">\n";
    for (const auto& object : content.objects) appendRecord(*object);
    out_ += content.unknown.elements;
    // No line break at the end: with its last byte the file loses its last tag.
    out_ += "</library>";
    return std::move(out_);
  }

 private:
  struct Tags {
    std::string name;
    std::string open;
    std::string close;
  };

  // A file that a newer version has added to goes on saying so.
  static std::string versionFor(const StoreContent& content) {
    const std::size_t point = content.version.find('.');
    if (point != std::string::npos) {
      const auto minor = storetext::parseInteger(std::string_view(content.version).substr(point + 1));
      if (minor > XMLStore::kMinorVersion) return content.version;
    }
    return std::to_string(XMLStore::kMajorVersion) + "." + std::to_string(XMLStore::kMinorVersion);
  }

  const std::vector<Tags>& tagsOf(const EntityDescription& entity) {
    if (tagsOwner_ != &entity) {
      tagsOwner_ = &entity;
      tags_.clear();
      for (const PropertyDescription& property : entity.properties())
        tags_.push_back({property.name, "<" + property.name + ">", "</" + property.name + ">"});
    }
    return tags_;
  }

  void appendRecord(const ManagedObject& object) {
    const EntityDescription& entity = object.entity();
    const std::vector<Tags>& tags = tagsOf(entity);
    out_ += '<';
    out_ += entity.name();
    out_ += " id=\"";
    storetext::appendInteger(out_, object.objectID_);
    out_ += '"';
    if (object.unknown_) out_ += object.unknown_->attributes;
    out_ += '>';
    for (std::size_t i = 0; i < tags.size(); ++i) {
      const PropertyDescription& property = entity.properties()[i];
      if (property.storage != Storage::Stored) continue;
      if (property.type == PropertyType::ToMany) {
        appendReferences(object, static_cast<int>(i), tags[i]);
      } else if (!object.values_[i].isNull()) {
        appendValue(object, static_cast<int>(i), tags[i]);
      }
    }
    if (object.unknown_) out_ += object.unknown_->elements;
    out_ += "</";
    out_ += entity.name();
    out_ += ">\n";
  }

  // Only lists that nothing points back from: any other follows from the other side's references.
  void appendReferences(const ManagedObject& object, int index, const Tags& tags) {
    if (!object.propertyAt(index).inverse.empty() || object.toMany(index).empty()) return;
    out_ += tags.open;
    for (const ManagedObject* other : object.toMany(index)) {
      storetext::appendInteger(out_, other->objectID_);
      out_ += ' ';
    }
    out_.back() = '<';
    out_ += std::string_view(tags.close).substr(1);
  }

  void appendValue(const ManagedObject& object, int index, const Tags& tags) {
    const std::string* const attributes = unknownAttributes(object, index);
    const auto open = [&](std::string_view encoding) {
      if (attributes == nullptr && encoding.empty()) {
        out_ += tags.open;
        return;
      }
      out_ += '<';
      out_ += tags.name;
      out_ += encoding;
      if (attributes != nullptr) out_ += *attributes;
      out_ += '>';
    };
    const Value& value = object.primitiveValue(index);
    const std::size_t start = out_.size();
    open("");
    if (value.isString()) {
      if (!storetext::appendText(out_, value.stringValue())) {
        out_.resize(start);
        open(" encoding=\"base64\"");
        appendBase64(out_, value.stringValue());
      }
    } else {
      appendPlain(value);
    }
    out_ += tags.close;
  }

  void appendPlain(const Value& value) {
    switch (value.kind()) {
      case Value::Kind::Boolean:
        out_ += value.boolValue() ? '1' : '0';
        break;
      case Value::Kind::Date:
        storetext::appendDate(out_, value.dateValue().value_or(Date{}));
        break;
      case Value::Kind::Data:
        appendBase64(out_, value.dataValue());
        break;
      case Value::Kind::Record:
        storetext::appendInteger(out_, value.recordValue()->objectID());
        break;
      default:
        // Any other kind was refused when the record was validated.
        storetext::appendInteger(out_, value.integerValue());
    }
  }

  static const std::string* unknownAttributes(const ManagedObject& object, int index) {
    if (!object.unknown_) return nullptr;
    for (const auto& [key, attributes] : object.unknown_->onKeys)
      if (key == index) return &attributes;
    return nullptr;
  }

  std::string out_;
  const EntityDescription* tagsOwner_ = nullptr;
  std::vector<Tags> tags_;
};

std::string XMLStore::write(const StoreContent& content, std::size_t expectedSize) {
  return StoreWriter(expectedSize).write(content);
}

}  // namespace clipwave
