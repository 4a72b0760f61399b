// The library's object model: the entities Channel, Vodcast and Image with their keys, and the stored
// queries.
#pragma once

#include <memory>
#include <string_view>

#include "model/LibraryHost.h"
#include "platform/coredata/ManagedObjectModel.h"

namespace clipwave {

inline constexpr std::string_view kChannelEntity = "Channel";
inline constexpr std::string_view kVodcastEntity = "Vodcast";
inline constexpr std::string_view kImageEntity = "Image";
// The stored queries: images whose `url` is the variable "URL"; channels that still carry the placeholder
// URL.
inline constexpr std::string_view kFetchImages = "fetchImages";
inline constexpr std::string_view kDefaultURLFetch = "defaultURLFetch1";
// The URL that a channel carries until the user has said where it is to be found.
inline constexpr std::string_view kPlaceholderURL = "http://127.0.0.1/";

// `host` must outlive every record of the model.
std::unique_ptr<ManagedObjectModel> makeLibraryModel(LibraryHost& host);

}  // namespace clipwave
