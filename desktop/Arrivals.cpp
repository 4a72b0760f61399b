#include "desktop/Arrivals.h"

#include <QApplication>
#include <filesystem>

#include "publish/SubscriptionLinks.h"

namespace clipwave {

namespace {

constexpr Seconds kLook{0.2};  // how often it is looked whether an import is welcome

}  // namespace

Arrivals::~Arrivals() {
  if (timer_) timer_->invalidate();
}

bool Arrivals::isFeedAddress(const std::string& item) {
  std::error_code ignored;
  return feedURLForAddress(item) && !std::filesystem::exists(item, ignored);
}

void Arrivals::take(const std::vector<std::string>& items) {
  std::vector<std::string> paths;
  for (const std::string& item : items) {
    if (item.starts_with('/')) {
      paths.push_back(item);
    } else {
      addresses_.push_back(item);
    }
  }
  if (!paths.empty()) program_.delegate().openFiles(paths);
  importNext();
  if (addresses_.empty() || timer_) return;
  timer_ = program_.services().runLoop.scheduleRepeatingTimer(kLook, [this] { importNext(); });
}

bool Arrivals::isImportWelcome() const {
  return !isImporting_ && QApplication::activeModalWidget() == nullptr &&
         program_.services().runLoop.mode() == RunLoop::Mode::Default &&
         program_.interface().mainWindow.attachedSheet() == nullptr &&
         !program_.controller().publishRun().isCopying();
}

void Arrivals::importNext() {
  if (!addresses_.empty() && isImportWelcome() && !program_.services().application.isTerminated()) {
    const std::string address = addresses_.front();
    addresses_.pop_front();
    isImporting_ = true;
    import(address);
    isImporting_ = false;
  }
  if (!addresses_.empty() || !timer_) return;
  timer_->invalidate();
  timer_.reset();
}

void Arrivals::import(const std::string& address) {
  // What is no address is told as the sheet for addresses tells it.
  program_.controller().feedImport().importRSSWithURL(feedURLForAddress(address).value_or(address));
}

}  // namespace clipwave
