#include "transfer/CopyFiles.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/foundation/FileManager.h"
#include "transfer/DestinationFolders.h"
#include "transfer/FileExistsPrompt.h"

namespace clipwave {
namespace {

constexpr std::string_view kCopyCommand = "copyfile";

struct ErrorText {
  int type;
  std::string_view name;
  std::string_view message;
};

constexpr std::array<ErrorText, 8> kErrorTexts = {{
    {kDMUnknownError, "kDMUnknownError", ".Mac gave an unknown error (?)"},
    {kDMInvalidCredentials, "kDMInvalidCredentials",
     "Username or password is incorrect.  Open the .Mac System Preference and update your username and "
     "password."},
    {kDMInsufficientStorage, "kDMInsufficientStorage",
     "iDisk is full.  Delete some files from your iDisk to free up space."},
    {kDMNetworkError, "kDMNetworkError", "Could not contact to .Mac.  Check your network connection."},
    {kDMResourceNotFound, "kDMResourceNotFound", "Could not find the media path. Check your preferences."},
    {kDMResourceExists, "kDMResourceExists",
     "Could not overwrite file.  Check permissions or try deleting the file manually."},
    {kDMServiceBusy, "kDMServiceBusy", ".Mac is busy.  Wait a bit and try again later."},
    {kDMInvalidParameter, "kDMInvalidParameter", ".Mac is has an invalid paramater (?)"},
}};

// A server may take "a//b" for another place than "a/b". The top level is "".
std::string iDiskPath(std::string_view directory) {
  std::string path;
  for (const std::string& component : pathComponents(directory)) {
    path = path.empty() ? component : stringByAppendingPathComponent(path, component);
  }
  return path == "/" ? std::string() : path;
}

int percentOf(const DMTransaction& transaction) {
  const std::int64_t length = transaction.contentLength();
  return length == 0 ? 0 : static_cast<int>(transaction.bytesTransferred() * 100 / length);
}

}  // namespace

CopyFiles::CopyFiles(DotMacCopyServices services) : services_(services) {}

CopyFiles::~CopyFiles() = default;

std::optional<std::string> CopyFiles::dmusername(DotMacKit& dotMac) {
  const auto account = dotMac.accountFromPreferencesWithApplicationID(kApplicationID);
  if (!account) return std::nullopt;
  return account->name();
}

void CopyFiles::offerToSignUp(Application& application, DotMacKit& dotMac) {
  const Alert::Answer answer = application.runCriticalAlertPanel(
      "No .Mac Account!",
      "You have not signed up for .Mac yet or entered your information into the .Mac System Preference.  "
      "Do you want to go to .Mac and sign up?",
      "OK", "Cancel");
  if (answer == Alert::Answer::Default) dotMac.signUpNewMember();
}

bool CopyFiles::copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                          CopyDelegate& sender) {
  delegate_ = &sender;
  if (!isMembershipValid()) return false;
  const auto session = openSession();
  const std::string destination = iDiskPath(toDirectory.value_or(""));
  if (!makeFolders(*session, destination)) return false;
  const auto toBeCopied =
      askAboutExistingFiles(services_.application, services_.defaults, files, destination,
                            [&session](const std::string& path) { return session->fileExistsAtPath(path); });
  if (!toBeCopied || toBeCopied->empty()) return false;
  copyNextItemInArray({toBeCopied->begin(), toBeCopied->end()}, destination);
  return true;
}

// False after the user, or for refused credentials the delegate, has been told why.
bool CopyFiles::isMembershipValid() {
  ma_ = services_.dotMac.accountFromPreferencesWithApplicationID(kApplicationID);
  if (!ma_) {
    offerToSignUp(services_.application, services_.dotMac);
    return false;
  }
  ma_->setIsSynchronous(true);
  if (const int status = ma_->validateCredentials(); status != kDMCredentialsAccepted) {
    noteTrouble(ma_->errorDescription());
    lastWord()->connectionError(*this, status, errorMessageForType(status));
    return false;
  }
  if (ma_->daysLeftUntilExpiration()->result().doubleValue() > 0) return true;
  services_.application.runCriticalAlertPanel(
      ".Mac Account Expired", "Your .Mac Account has expired.  You will now be taken to .Mac to renew.",
      "OK");
  ma_->upgradeAccount();
  return false;
}

bool CopyFiles::makeFolders(DMiDiskSession& session, const std::string& toDirectory) {
  const DestinationStore iDisk{
      [&session](const std::string& path, bool& isDirectory) {
        return session.fileExistsAtPath(path, isDirectory);
      },
      [&session](const std::string& path) { return session.createDirectoryAtPath(path); }};
  return makeDestinationFolders(services_.application, services_.log, toDirectory, iDisk,
                                MountedVolumes::NotOfThisStore);
}

void CopyFiles::copyNextItemInArray(std::deque<CopyEntry> files, const std::string& toDirectory) {
  stopTimer();
  if (files.empty()) {
    if (CopyDelegate* delegate = lastWord()) delegate->copyCompleted(*this);
    return;
  }
  CopyEntry entry = std::move(files.front());
  files.pop_front();
  const auto session = openSession();
  const auto transaction =
      session->putLocalFileAtPath(entry.path, destinationFilePath(toDirectory, entry.filename));
  currentTransaction_ = transaction;
  transaction->setContext(
      UploadContext{std::string(kCopyCommand), std::move(entry), toDirectory, std::move(files)});
  timer_ = services_.runLoop.scheduleRepeatingTimer(
      kProgressInterval, [self = self(), uploaded = std::weak_ptr(transaction)] {
        // The delegate may abort, which lets go of what the timer captured.
        const auto kept = self;  // NOLINT(performance-unnecessary-copy-initialization)
        kept->updateCopy(uploaded);
      });
}

void CopyFiles::updateCopy(const std::weak_ptr<DMTransaction>& transaction) {
  currentTransaction_ = transaction;
  const auto upload = transaction.lock();
  const auto* context = upload ? std::any_cast<UploadContext>(&upload->context()) : nullptr;
  if (context == nullptr || delegate_ == nullptr) return;
  delegate_->updateCopyStatusForFile(context->source.filename, percentOf(*upload));
}

void CopyFiles::abort() {
  // The timer may be the last who holds the back-end.
  const auto kept = self();
  if (const auto transaction = currentTransaction_.lock()) {
    isAborted_ = true;
    transaction->abort();
  }
  stopTimer();
}

void CopyFiles::transactionSuccessful(DMTransaction& transaction) {
  const auto* context = std::any_cast<UploadContext>(&transaction.context());
  if (context == nullptr || context->command != kCopyCommand) return;
  if (delegate_ != nullptr) delegate_->fileCopied(context->source);
  // The file arrived before the abort did, or the delegate has aborted now: nothing is left for the service
  // to report as aborted, and yet no other file may go out.
  if (isAborted_) return transactionAborted(transaction);
  copyNextItemInArray(context->filesToCopy, context->destination);
}

void CopyFiles::transactionHadError(DMTransaction& transaction) {
  abort();
  noteTrouble(transaction.errorDescription());
  const int type = transaction.errorType();
  const std::string message = errorMessageForType(type);
  if (CopyDelegate* delegate = lastWord()) delegate->connectionError(*this, type, message);
}

void CopyFiles::transactionAborted(DMTransaction& transaction) {
  noteTrouble(transaction.errorDescription());
  services_.log.write("transactionAborted");
  if (CopyDelegate* delegate = lastWord()) delegate->copyAborted(*this);
}

std::string CopyFiles::errorMessageForType(int type) {
  const auto* known = std::find_if(kErrorTexts.begin(), kErrorTexts.end(),
                                   [type](const ErrorText& text) { return text.type == type; });
  if (known == kErrorTexts.end()) known = kErrorTexts.begin();
  services_.log.write("transactionHadError");
  services_.log.write(known->name);
  return std::string(known->message);
}

void CopyFiles::noteTrouble(std::string sentence) {
  if (!sentence.empty()) troubles_.push_back(std::move(sentence));
}

void CopyFiles::stopTimer() {
  if (const auto timer = timer_.lock()) timer->invalidate();
}

std::unique_ptr<DMiDiskSession> CopyFiles::openSession() {
  auto session = services_.dotMac.iDiskSessionWithCredentials(ma_);
  session->setTransactionDelegate(self());
  return session;
}

}  // namespace clipwave
