#include "desktop/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <cerrno>
#include <filesystem>
#include <utility>

#include "desktop/Arrivals.h"
#include "desktop/InstanceMessage.h"
#include "desktop/Text.h"

namespace clipwave {
namespace {

namespace fs = std::filesystem;

constexpr char kAcknowledged = 'K';
constexpr std::size_t kMostVisitors = 16;
constexpr int kVisitMilliseconds = 3000;  // nobody stays longer who has not said what they want
constexpr int kRetryMilliseconds = 50;

QByteArray activationTokenFromEnvironment() {
  QByteArray token;
  for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
    if (token.isEmpty()) token = qgetenv(name);
    qunsetenv(name);
  }
  return token;
}

// Whether it is a folder, no link, of this user, in which nobody else can make files.
bool isOwnFolder(const std::string& path) {
  struct stat status {};
  return !path.empty() && path.front() == '/' && ::lstat(path.c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() && (status.st_mode & 022) == 0;
}

// Where starts of the user's programs meet; "" where there is no safe place.
std::string meetingFolder() {
  const std::string runtime = qgetenv("XDG_RUNTIME_DIR").toStdString();
  if (isOwnFolder(runtime)) return runtime;
  const std::string own = toPath(QDir::tempPath()) + "/clipwave-" + std::to_string(::geteuid());
  ::mkdir(own.c_str(), 0700);
  return isOwnFolder(own) ? own : std::string();
}

// The paths of one library's lock and socket, without their endings; "" as above.
std::string meetingPlace(const std::string& libraryFolder) {
  const std::string folder = meetingFolder();
  if (folder.empty()) return {};
  std::error_code ignored;
  const fs::path canonical = fs::weakly_canonical(libraryFolder, ignored);
  const std::string library = canonical.empty() ? libraryFolder : canonical.string();
  const QByteArray digest =
      QCryptographicHash::hash(QByteArray::fromStdString(library), QCryptographicHash::Sha256);
  return folder + "/clipwave-" + digest.toHex().left(16).toStdString();
}

// Held until it is destroyed, and no longer than its process lives. The file stays: one who removed it could
// take it from under another who is about to lock it.
class ProcessLock {
 public:
  ProcessLock() = default;
  ~ProcessLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  ProcessLock(const ProcessLock&) = delete;
  ProcessLock& operator=(const ProcessLock&) = delete;

  enum class Outcome { Taken, HeldByAnother, Impossible };
  Outcome take(const std::string& path) {
    if (descriptor_ < 0)
      descriptor_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (descriptor_ < 0) return Outcome::Impossible;
    if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return Outcome::Taken;
    return errno == EWOULDBLOCK || errno == EINTR ? Outcome::HeldByAnother : Outcome::Impossible;
  }

 private:
  int descriptor_ = -1;
};

// Answers whether the first process has acknowledged the frame.
bool handOver(const QByteArray& frame, const QString& socketPath, const QDeadlineTimer& end) {
  const auto rest = [&end] { return static_cast<int>(end.remainingTime()); };
  QLocalSocket socket;
  socket.connectToServer(socketPath);
  if (!socket.waitForConnected(rest())) return false;
  socket.write(frame);
  while (socket.bytesToWrite() > 0)
    if (!socket.waitForBytesWritten(rest())) return false;
  char answer = 0;
  if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(rest())) return false;
  return socket.getChar(&answer) && answer == kAcknowledged;
}

InstanceMessage messageWith(const std::vector<std::string>& items, const QByteArray& token) {
  InstanceMessage message{.items = {}, .activationToken = token};
  for (const std::string& item : items) {
    std::error_code ignored;
    if (item.empty()) continue;
    message.items.push_back(Arrivals::isFeedAddress(item) ? item : fs::absolute(item, ignored).string());
  }
  return message;
}

}  // namespace

// The first process's side: the lock, the socket, and who is talking at it.
class SingleInstance::Reception : public QObject {
 public:
  Reception(RunLoop& runLoop, const std::string& libraryFolder)
      : runLoop_(runLoop), place_(meetingPlace(libraryFolder)), token_(activationTokenFromEnvironment()) {
    connect(&server_, &QLocalServer::newConnection, this, [this] { receive(); });
  }

  Role claim(const std::vector<std::string>& items, Seconds timeout) {
    if (place_.empty()) return Role::First;
    const QByteArray frame = frameOf(messageWith(items, token_));
    const QDeadlineTimer end(static_cast<qint64>(timeout.count() * 1000));
    do {
      const auto outcome = lock_.take(place_ + ".lock");
      if (outcome == ProcessLock::Outcome::Taken) listen();
      if (outcome != ProcessLock::Outcome::HeldByAnother) return Role::First;
      if (handOver(frame, socketPath(), end)) return Role::Second;
      // It may be about to listen, or about to end.
      QThread::msleep(kRetryMilliseconds);
    } while (!end.hasExpired());
    return Role::Unreachable;
  }

  void setOnItems(OnItems onItems) {
    onItems_ = std::move(onItems);
    for (InstanceMessage& message : std::exchange(waiting_, {})) deliverLater(std::move(message));
  }

 private:
  QString socketPath() const { return pathToQString(place_ + ".socket"); }

  void listen() {
    // With the lock held, a socket that lies there is nobody's.
    QLocalServer::removeServer(socketPath());
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(socketPath());
  }

  void receive() {
    while (QLocalSocket* visitor = server_.nextPendingConnection()) {
      std::erase_if(visitors_, [](const auto& other) { return other == nullptr; });
      // A newcomer comes before those who have been silent for longest.
      if (visitors_.size() >= kMostVisitors) {
        dismiss(visitors_.front());
        visitors_.erase(visitors_.begin());
      }
      visitors_.emplace_back(visitor);
      connect(visitor, &QLocalSocket::disconnected, visitor, &QObject::deleteLater);
      QTimer::singleShot(kVisitMilliseconds, visitor, [visitor] { dismiss(visitor); });
      auto bytes = std::make_shared<QByteArray>();
      connect(visitor, &QLocalSocket::readyRead, visitor, [this, visitor, bytes] { hear(visitor, *bytes); });
      if (visitor->bytesAvailable() > 0) hear(visitor, *bytes);
    }
  }

  void hear(QLocalSocket* visitor, QByteArray& bytes) {
    bytes += visitor->readAll();
    bool isBroken = false;
    auto message = messageFrom(bytes, &isBroken);
    if (isBroken) return dismiss(visitor);
    if (!message) return;
    QObject::disconnect(visitor, &QLocalSocket::readyRead, nullptr, nullptr);
    visitor->putChar(kAcknowledged);
    visitor->flush();
    visitor->disconnectFromServer();
    onItems_ ? deliverLater(std::move(*message)) : waiting_.push_back(std::move(*message));
  }

  static void dismiss(QLocalSocket* visitor) {
    QObject::disconnect(visitor, &QLocalSocket::readyRead, nullptr, nullptr);
    visitor->abort();
    visitor->deleteLater();
  }

  void deliverLater(InstanceMessage message) {
    runLoop_.performLater([this, alive = std::weak_ptr(alive_), message = std::move(message)] {
      if (!alive.expired() && onItems_) onItems_(message.items, message.activationToken);
    });
  }

  RunLoop& runLoop_;
  const std::string place_;
  const QByteArray token_;
  std::vector<QPointer<QLocalSocket>> visitors_;  // as they came
  ProcessLock lock_;                              // dropped after the socket is gone
  QLocalServer server_;                           // owns the visitors
  OnItems onItems_;
  std::vector<InstanceMessage> waiting_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

SingleInstance::SingleInstance(RunLoop& runLoop, const std::string& libraryFolder)
    : reception_(std::make_unique<Reception>(runLoop, libraryFolder)) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Role SingleInstance::claim(const std::vector<std::string>& items, Seconds timeout) {
  return reception_->claim(items, timeout);
}

std::string SingleInstance::unreachableMessage() {
  return QCoreApplication::translate("SingleInstance",
                                     "Clipwave is already open, but it does not answer. Wait until it has "
                                     "finished, or end it, and try again.")
      .toStdString();
}

void SingleInstance::setOnItems(OnItems onItems) {
  reception_->setOnItems(std::move(onItems));
}

}  // namespace clipwave
