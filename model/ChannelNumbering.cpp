#include "model/ChannelNumbering.h"

#include "model/LibraryModel.h"
#include "model/MediaText.h"

namespace clipwave {

std::string numberedChannelTitle(int number) {
  return "Channel " + twoDigits(number);
}

std::string numberedFeedFileName(std::string_view prefix, int number) {
  return std::string(prefix) + twoDigits(number) + ".xml";
}

int ChannelNumbering::numberFor(ManagedObject& newChannel, std::string_view prefix) {
  ManagedObjectContext* context = newChannel.managedObjectContext();
  const AttributeIndex& titles = *context->index(kChannelEntity, "vcTitle");
  const AttributeIndex& fileNames = *context->index(kChannelEntity, "filename");

  auto found = progress_.find(prefix);
  if (found == progress_.end()) found = progress_.emplace(prefix, Progress{}).first;
  Progress& progress = found->second;
  const auto witness = progress.witness.lock();
  const bool stillHolds = witness && witness->managedObjectContext() == context &&
                          progress.releasedTitles == titles.releases() &&
                          progress.releasedFileNames == fileNames.releases();

  int number = stillHolds ? progress.number : 1;
  while (titles.count(numberedChannelTitle(number)) > 0 ||
         fileNames.count(numberedFeedFileName(prefix, number)) > 0) {
    ++number;
  }
  progress = {newChannel.weak_from_this(), titles.releases(), fileNames.releases(), number};
  return number;
}

}  // namespace clipwave
