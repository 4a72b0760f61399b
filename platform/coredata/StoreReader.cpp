// The reading half of the store's file format.
#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/StoreText.h"
#include "platform/coredata/XMLStore.h"
#include "platform/foundation/Base64.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

// Texts lie in their element's own node, which halves the tree; text of nothing but blanks counts, since it
// may part the words of something unknown; attribute values stay as they are.
constexpr unsigned kParseOptions = pugi::parse_embed_pcdata | pugi::parse_ws_pcdata | pugi::parse_escapes |
                                   pugi::parse_eol | pugi::parse_cdata;

// No library ever gave so many ids; one that says so would soon run out of them.
constexpr std::int64_t kMostRecords = std::int64_t{1} << 62;

struct StringWriter final : pugi::xml_writer {
  explicit StringWriter(std::string& text) : out(text) {}
  void write(const void* data, std::size_t size) override {
    for (const char c : std::string_view(static_cast<const char*>(data), size)) {
      // The parser's own printer would lose it to the next reading.
      if (c == '\r') {
        out += "&#13;";
      } else {
        out += c;
      }
    }
  }
  std::string& out;
};

}  // namespace

class StoreReader {
 public:
  explicit StoreReader(const ManagedObjectModel& model) : model_(model) {}

  Result<StoreContent> read(std::string text) {
    const bool done = readDocument(text) && resolveReferences();
    if (!done) return *error_;
    return std::move(content_);
  }

 private:
  struct Reference {
    ManagedObject* owner;
    int index;
    std::int64_t target;
  };

  bool fail(std::string description, int code = kPersistentStoreOpenError) {
    error_ = cocoaError(code, std::move(description));
    return false;
  }

  bool failAt(std::size_t byte) {
    return fail(
        filledIn(localized("Library", "It is damaged or cut off at byte %1."), {std::to_string(byte)}));
  }

  // `sentence` has "%1" and "%2" for the kind and the id of the record, and perhaps "%3".
  bool failIn(const ManagedObject& object, const std::string& sentence, std::string_view key = {}) {
    return fail(filledIn(sentence, {object.entity().name(), std::to_string(object.objectID_), key}));
  }

  bool readDocument(std::string& text) {
    // Parsing destroys the text, so this comes first. A newer major version need not keep to these rules.
    const std::optional<std::size_t> illFormed = storetext::findIllFormed(text);
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer_inplace(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
    if (!parsed) return failAt(illFormed.value_or(static_cast<std::size_t>(parsed.offset)));
    pugi::xml_node root = document.first_child();
    if (root.next_sibling() || std::strcmp(root.name(), "library") != 0)
      return fail(localized("Library", "It is not a library."));
    if (!readVersion(root)) return false;
    if (illFormed) return failAt(*illFormed);
    return readLibrary(root);
  }

  bool readVersion(const pugi::xml_node& root) {
    const std::string_view version = root.attribute("version").value();
    const std::size_t point = version.find('.');
    const auto major = storetext::parseInteger(version.substr(0, point));
    const auto minor =
        storetext::parseInteger(point == version.npos ? std::string_view() : version.substr(point + 1));
    if (!major || !minor || *major < 1 || *minor < 0)
      return fail(localized("Library", "It is not a library: it bears no version."));
    if (*major > XMLStore::kMajorVersion) {
      return fail(
          filledIn(localized("Library", "It was written by a newer version of this application (format %1)."),
                   {version}),
          kPersistentStoreIncompatibleVersionHashError);
    }
    content_.version = version;
    return true;
  }

  bool readLibrary(pugi::xml_node& root) {
    const auto next = storetext::parseInteger(root.attribute("next").value());
    if (!next || *next < 1) return fail(localized("Library", "It is damaged: its next id is missing."));
    if (*next > kMostRecords)
      return fail(localized("Library", "It is damaged: there is no id left for a new record."));
    content_.nextObjectID = *next;
    for (const pugi::xml_attribute& attribute : root.attributes()) {
      const std::string_view name = attribute.name();
      if (name != "version" && name != "next")
        storetext::appendAttribute(content_.unknown.attributes, name, attribute.value());
    }
    if (!isBlank(root))
      return fail(localized("Library", "It is damaged: there is text between its records."));
    for (pugi::xml_node element = root.first_child(); element;) {
      const pugi::xml_node following = element.next_sibling();
      if (element.type() != pugi::node_element) {
        if (!isBlank(element))
          return fail(localized("Library", "It is damaged: there is text between its records."));
      } else if (const EntityDescription* const entity = entityNamed(element.name())) {
        if (!readRecord(element, *entity)) return false;
        // The tree shrinks as the records grow. What this version does not know may be nested so deeply that
        // taking it down, which is recursive, would exhaust the stack.
        if (!content_.objects.back()->unknown_) root.remove_child(element);
      } else {
        keep(element, content_.unknown.elements);
        content_.unknown.elements += '\n';
      }
      element = following;
    }
    return true;
  }

  // Whether there is nothing to lose in the text of this node: in an element, that ahead of its children.
  static bool isBlank(const pugi::xml_node& node) {
    return std::string_view(node.value()).find_first_not_of(" \t\n") == std::string_view::npos;
  }

  static void keep(const pugi::xml_node& element, std::string& out) {
    StringWriter writer(out);
    element.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
  }

  static UnknownContent& unknownOf(ManagedObject& object) {
    if (!object.unknown_) object.unknown_ = std::make_unique<UnknownContent>();
    return *object.unknown_;
  }

  const EntityDescription* entityNamed(std::string_view name) {
    if (lastEntity_ == nullptr || lastEntity_->name() != name) lastEntity_ = model_.entity(name);
    return lastEntity_;
  }

  bool readRecord(const pugi::xml_node& element, const EntityDescription& entity) {
    std::shared_ptr<ManagedObject> object = entity.makeObject();
    for (const pugi::xml_attribute& attribute : element.attributes()) {
      if (std::strcmp(attribute.name(), "id") == 0) {
        object->objectID_ = storetext::parseInteger(attribute.value()).value_or(0);
      } else {
        storetext::appendAttribute(unknownOf(*object).attributes, attribute.name(), attribute.value());
      }
    }
    if (object->objectID_ < 1 || object->objectID_ >= content_.nextObjectID)
      return fail(filledIn(localized("Library", "It is damaged: a %1 has no id or one that was never given."),
                           {entity.name()}));
    byID_.emplace_back(object->objectID_, object.get());
    if (!isBlank(element))
      return failIn(*object, localized("Library", "It is damaged: the %1 %2 holds text beside its values."));
    std::size_t expected = 0;
    for (const pugi::xml_node& child : element.children()) {
      if (child.type() != pugi::node_element) {
        if (!isBlank(child))
          return failIn(*object,
                        localized("Library", "It is damaged: the %1 %2 holds text beside its values."));
        continue;
      }
      const int index = indexOf(entity, child.name(), expected);
      if (index < 0) {
        keep(child, unknownOf(*object).elements);
      } else if (!readValue(child, *object, index)) {
        return false;
      }
    }
    content_.objects.push_back(std::move(object));
    return true;
  }

  // The position of a key that belongs into the file. Keys mostly come in the model's order: the one behind
  // the last is tried before the name is looked up.
  static int indexOf(const EntityDescription& entity, std::string_view name, std::size_t& expected) {
    const auto& properties = entity.properties();
    while (expected < properties.size() && properties[expected].name != name) ++expected;
    if (expected == properties.size()) {
      const int found = entity.indexOf(name);
      if (found < 0) {
        expected = 0;
        return -1;
      }
      expected = static_cast<std::size_t>(found);
    }
    const PropertyDescription& property = properties[expected];
    const bool belongs = property.storage == Storage::Stored &&
                         (property.type != PropertyType::ToMany || property.inverse.empty());
    return belongs ? static_cast<int>(expected++) : -1;
  }

  bool readValue(const pugi::xml_node& element, ManagedObject& object, int index) {
    const PropertyDescription& property = object.propertyAt(index);
    bool isEncoded = false;
    for (const pugi::xml_attribute& attribute : element.attributes()) {
      if (property.type == PropertyType::String && std::strcmp(attribute.name(), "encoding") == 0) {
        if (std::strcmp(attribute.value(), "base64") != 0)
          return failIn(object,
                        localized("Library", "It is damaged: the %1 %2 has a “%3” of an unknown encoding."),
                        property.name);
        isEncoded = true;
        continue;
      }
      auto& onKeys = unknownOf(object).onKeys;
      if (onKeys.empty() || onKeys.back().first != index) onKeys.emplace_back(index, "");
      storetext::appendAttribute(onKeys.back().second, attribute.name(), attribute.value());
    }
    std::string pieces;
    std::string_view text = element.value();
    if (element.first_child()) {
      pieces = text;
      for (const pugi::xml_node& piece : element.children()) {
        if (piece.type() == pugi::node_element)
          return failIn(object,
                        localized("Library", "It is damaged: the %1 %2 has a “%3” of an unknown type."),
                        property.name);
        pieces += piece.value();
      }
      text = pieces;
    }
    if (!object.slot(index).isNull())
      return failIn(object, localized("Library", "It is damaged: the %1 %2 has two values for “%3”."),
                    property.name);
    if (property.type == PropertyType::ToMany) return readReferences(object, index, text);
    object.slot(index) = isEncoded ? decoded(text) : valueFrom(property, text);
    if (object.slot(index).isNull())
      return failIn(object, localized("Library", "It is damaged: the %1 %2 has a “%3” that cannot be read."),
                    property.name);
    if (property.type == PropertyType::ToOne)
      references_.push_back({&object, index, object.slot(index).integerValue()});
    return true;
  }

  static Value decoded(std::string_view text) {
    const auto bytes = parseBase64(text);
    return bytes ? Value(*bytes) : Value();
  }

  // Absent when the text is none of that type. A reference gives the id for now.
  static Value valueFrom(const PropertyDescription& property, std::string_view text) {
    switch (property.type) {
      case PropertyType::String:
        return text;
      case PropertyType::Date:
        return storetext::parseDate(text);
      case PropertyType::Boolean:
        if (text == "1") return true;
        return text == "0" ? Value(false) : Value();
      case PropertyType::Integer32: {
        const auto number = storetext::parseInteger(text);
        const bool fits = number && *number >= std::numeric_limits<std::int32_t>::min() &&
                          *number <= std::numeric_limits<std::int32_t>::max();
        return fits ? Value(number) : Value();
      }
      case PropertyType::Binary: {
        const auto bytes = parseBase64(text);
        return bytes ? Value::data(*bytes) : Value();
      }
      case PropertyType::ToOne:
        return storetext::parseInteger(text);
      case PropertyType::ToMany:
      case PropertyType::Handle:
        break;
    }
    return {};
  }

  bool readReferences(ManagedObject& object, int index, std::string_view text) {
    while (!text.empty()) {
      const std::string_view word = text.substr(0, text.find(' '));
      const auto target = storetext::parseInteger(word);
      if (!target)
        return failIn(object,
                      localized("Library", "It is damaged: the %1 %2 has a “%3” that cannot be read."),
                      object.propertyAt(index).name);
      references_.push_back({&object, index, *target});
      text.remove_prefix(std::min(text.size(), word.size() + 1));
    }
    return true;
  }

  bool resolveReferences() {
    const auto byFirst = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::is_sorted(byID_.begin(), byID_.end(), byFirst)) std::sort(byID_.begin(), byID_.end(), byFirst);
    for (std::size_t i = 1; i < byID_.size(); ++i)
      if (byID_[i].first == byID_[i - 1].first)
        return failIn(*byID_[i].second,
                      localized("Library", "It is damaged: the %1 %2 shares its id with another."));
    for (const Reference& reference : references_) {
      const auto found =
          std::lower_bound(byID_.begin(), byID_.end(), std::pair(reference.target, nullptr), byFirst);
      const PropertyDescription& property = reference.owner->propertyAt(reference.index);
      if (found == byID_.end() || found->first != reference.target ||
          found->second->entity().name() != property.destination) {
        return fail(filledIn(
            localized("Library", "It is damaged: the %1 %2 names %3 as its “%4”, and there is no such %5."),
            {reference.owner->entity().name(), std::to_string(reference.owner->objectID_),
             std::to_string(reference.target), property.name, property.destination}));
      }
      join(*reference.owner, reference.index, *found->second);
    }
    for (const Reference& reference : references_)
      if (!isMutual(reference))
        return failIn(
            *reference.owner,
            localized("Library", "It is damaged: the %1 %2 belongs to a record that does not own it."));
    return true;
  }

  static void join(ManagedObject& owner, int index, ManagedObject& target) {
    if (owner.propertyAt(index).type == PropertyType::ToMany) {
      owner.toMany(index).push_back(&target);
      return;
    }
    owner.slot(index) = Value(&target);
    const int inverse = target.entity().indexOf(owner.propertyAt(index).inverse);
    if (inverse >= 0 && target.propertyAt(inverse).type == PropertyType::ToMany)
      target.toMany(inverse).push_back(&owner);
  }

  // One-to-one partners are written on both sides, which must agree.
  static bool isMutual(const Reference& reference) {
    const ManagedObject* const target = reference.owner->primitiveValue(reference.index).recordValue();
    if (target == nullptr) return true;
    const int inverse = target->entity().indexOf(reference.owner->propertyAt(reference.index).inverse);
    return inverse < 0 || target->propertyAt(inverse).type != PropertyType::ToOne ||
           target->primitiveValue(inverse).recordValue() == reference.owner;
  }

  const ManagedObjectModel& model_;
  StoreContent content_;
  std::optional<Error> error_;
  const EntityDescription* lastEntity_ = nullptr;
  std::vector<std::pair<std::int64_t, ManagedObject*>> byID_;
  std::vector<Reference> references_;
};

Result<StoreContent> XMLStore::read(std::string text, const ManagedObjectModel& model) {
  return StoreReader(model).read(std::move(text));
}

}  // namespace clipwave
