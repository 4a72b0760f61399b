#include "ui/MovieFacts.h"

#include <chrono>
#include <utility>

namespace clipwave {
namespace {

// What one turn of the main thread may spend on what has arrived: half a frame.
constexpr std::chrono::milliseconds kShareOfATurn{8};

bool lacksMovieValues(const ManagedObject& episode) {
  return episode.primitiveValue("mediaTimeString").isNull() || episode.primitiveValue("size").isNull();
}

bool holdsMovie(const ManagedObject& episode) {
  return episode.primitiveValue("movie").handleValue() != nullptr;
}

// As the episode's own reading would; to be called while the file's path is known to lead to it at once.
void storeMovieValues(Vodcast& episode, MovieFileReport& report) {
  if (report.updatedAlias)
    episode.setPrimitiveValue("alias", Value::data(*report.updatedAlias), ChangeKind::FilledValue);
  if (report.movie && !holdsMovie(episode))
    episode.setPrimitiveValue("movie", std::shared_ptr<Handle>(report.movie), ChangeKind::Unrecorded);
  if (!report.movie) return;
  (void)episode.mediaTimeString();
  (void)episode.mediaSizeString();
}

}  // namespace

MovieFacts::MovieFacts(RunLoop& runLoop, MovieOpener& movies) : runLoop_(runLoop) {
  desk_->owner = this;
  worker_ = std::thread(
      [desk = desk_, &runLoop, &movies] { work(*desk, std::weak_ptr<Desk>(desk), runLoop, movies); });
}

MovieFacts::~MovieFacts() {
  desk_->owner = nullptr;
  {
    const std::lock_guard lock(desk_->mutex);
    desk_->ends = true;
  }
  desk_->wakes.notify_one();
  worker_.join();
}

void MovieFacts::work(Desk& desk, const std::weak_ptr<Desk>& weakDesk, RunLoop& runLoop,
                      MovieOpener& movies) {
  MovieFileReader reader(movies);
  std::unique_lock lock(desk.mutex);
  for (;;) {
    desk.wakes.wait(lock, [&] { return desk.ends || !desk.requests.empty(); });
    if (desk.ends) return;
    const MovieFileRequest request = std::move(desk.requests.front());
    desk.requests.pop_front();
    lock.unlock();
    MovieFileReport report = reader.read(request);
    lock.lock();
    desk.reports.push_back(std::move(report));
    if (desk.ends || desk.reports.size() > 1) continue;  // one call takes all that has come by then
    runLoop.performFromAnyThread([weakDesk] {
      if (const auto shared = weakDesk.lock(); shared && shared->owner != nullptr) shared->owner->take();
    });
  }
}

const MovieFacts::Facts* MovieFacts::factsOf(const ManagedObject& episode) const {
  const auto found = known_.find(episode.objectID());
  if (found == known_.end()) return nullptr;
  const Known& known = found->second;
  const bool holds =
      known.path == episode.primitiveValue("vcPath") && known.alias == episode.primitiveValue("alias");
  return holds ? &known.facts : nullptr;
}

void MovieFacts::setWanted(const std::vector<ManagedObject*>& episodes) {
  {
    const std::lock_guard lock(desk_->mutex);
    for (const MovieFileRequest& request : desk_->requests) asked_.erase(request.episode);
    desk_->requests.clear();
    for (ManagedObject* episode : episodes) {
      const Value& path = episode->primitiveValue("vcPath");
      const Value& alias = episode->primitiveValue("alias");
      const bool hasFile = !path.stringValue().empty() || !alias.isNull();
      if (!hasFile || factsOf(*episode) != nullptr || asked_.contains(episode->objectID())) continue;
      asked_[episode->objectID()] = {episode->weak_from_this(), path, alias};
      MovieFileRequest request{.episode = episode->objectID(),
                               .path = std::string(path.stringValue()),
                               .alias = std::nullopt,
                               .opensMovie = lacksMovieValues(*episode)};
      if (!alias.isNull()) request.alias = std::string(alias.dataValue());
      desk_->requests.push_back(std::move(request));
    }
    if (desk_->requests.empty()) return;
  }
  desk_->wakes.notify_one();
}

void MovieFacts::forgetTroubles() {
  std::erase_if(known_, [](const auto& entry) { return entry.second.facts.trouble != MovieTrouble::None; });
}

void MovieFacts::take() {
  {
    const std::lock_guard lock(desk_->mutex);
    for (MovieFileReport& report : desk_->reports) reports_.push_back(std::move(report));
    desk_->reports.clear();
  }
  // A later call is under way already.
  if (taking_) return;
  const auto start = std::chrono::steady_clock::now();
  while (!reports_.empty() && std::chrono::steady_clock::now() - start < kShareOfATurn) {
    MovieFileReport report = std::move(reports_.front());
    reports_.pop_front();
    apply(report);
  }
  if (!reports_.empty()) {
    taking_ = true;
    runLoop_.performLater([weak = std::weak_ptr<Desk>(desk_)] {
      const auto desk = weak.lock();
      if (!desk || desk->owner == nullptr) return;
      desk->owner->taking_ = false;
      desk->owner->take();
    });
  }
  observers_.call();
}

void MovieFacts::apply(MovieFileReport& report) {
  const auto found = asked_.find(report.episode);
  if (found == asked_.end()) return;
  const Asked asked = std::move(found->second);
  asked_.erase(found);
  const auto record = asked.episode.lock();
  if (!record || record->isDeleted()) return;
  // Another movie by now: it is asked for anew when the episode is painted.
  if (!(record->primitiveValue("vcPath") == asked.path) || !(record->primitiveValue("alias") == asked.alias))
    return;
  storeMovieValues(static_cast<Vodcast&>(*record), report);
  known_[report.episode] = {
      record->primitiveValue("vcPath"), record->primitiveValue("alias"), {report.trouble, report.bytes}};
}

}  // namespace clipwave
