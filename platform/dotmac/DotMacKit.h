// The .Mac service as the application knows it: the member's account, sessions on the member's iDisk, and
// transactions that report back on the run loop.
#pragma once

#include <any>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/Value.h"

namespace clipwave {

// What validateCredentials answers when name and password are accepted.
inline constexpr int kDMCredentialsAccepted = 1;

// Why a transaction or a check of the credentials failed.
enum DMErrorType : int {
  kDMUnknownError = 100,
  kDMInvalidCredentials = 101,
  kDMInsufficientStorage = 102,
  kDMNetworkError = 103,
  kDMResourceNotFound = 104,
  kDMResourceExists = 105,  // something stands in the way, is locked, or may not be written
  kDMServiceBusy = 106,
  kDMInvalidParameter = 107,
};

// One thing asked of the service. In progress it keeps itself and its session's delegate alive, until the one
// callback with which it ends has returned.
class DMTransaction {
 public:
  virtual ~DMTransaction() = default;

  // Whatever the caller wants to find again in its callbacks.
  void setContext(std::any context) { context_ = std::move(context); }
  const std::any& context() const { return context_; }

  virtual std::int64_t bytesTransferred() const = 0;
  // 0 while it is not known.
  virtual std::int64_t contentLength() const = 0;
  // Of a transaction that had an error; 0 otherwise.
  virtual int errorType() const = 0;
  // What went wrong, for whoever has to look into it: what was asked and what came of it. Also of an abort
  // that had to leave something behind; "" otherwise.
  virtual std::string errorDescription() const { return {}; }
  // Stops it; transactionAborted follows from the loop once nothing is left of it on the server, in a few
  // seconds at the latest, or in about half a minute where the server still holds the file; or
  // transactionSuccessful where it turns out to have been done by then. Does nothing when the transaction has
  // ended or was aborted before.
  virtual void abort() = 0;
  // Of a completed query; null otherwise.
  virtual Value result() const = 0;

 private:
  std::any context_;
};

// Called on the run loop in its default mode, never from within the operation that started the transaction:
// exactly one of the three, once for each transaction.
class DMTransactionDelegate {
 public:
  virtual ~DMTransactionDelegate() = default;
  virtual void transactionSuccessful(DMTransaction& transaction) = 0;
  virtual void transactionHadError(DMTransaction& transaction) = 0;
  virtual void transactionAborted(DMTransaction& transaction) = 0;
};

// Its queries answer before they return, whichever way isSynchronous is set.
class DMMemberAccount {
 public:
  virtual ~DMMemberAccount() = default;
  virtual void setIsSynchronous(bool isSynchronous) = 0;
  virtual std::string name() const = 0;
  // kDMCredentialsAccepted, or a DMErrorType.
  virtual int validateCredentials() = 0;
  // What was wrong with them, as errorDescription() of a transaction.
  virtual std::string errorDescription() const { return {}; }
  // A completed transaction whose result is the number of days, begun ones included, until the membership
  // expires: 0 or less when it has, kNeverExpires when it never does.
  virtual std::shared_ptr<DMTransaction> daysLeftUntilExpiration() = 0;
  // Takes the user to the service's page for renewing the membership.
  virtual void upgradeAccount() = 0;

  static constexpr int kNeverExpires = 1'000'000;
};

// Paths are those within the iDisk, in UTF-8 and not escaped; the first "/" may be left out. Questions are
// answered before they return. A session may go while its transactions are in progress.
class DMiDiskSession {
 public:
  virtual ~DMiDiskSession() = default;
  virtual void setTransactionDelegate(std::shared_ptr<DMTransactionDelegate> delegate) = 0;
  // Whether anything exists at the path. Where the service does not say, YES: who asks does so before a file
  // is replaced.
  virtual bool fileExistsAtPath(std::string_view path) = 0;
  // The same for who is about to make a folder: NO where the service does not say. Sets `isDirectory` when
  // something exists.
  virtual bool fileExistsAtPath(std::string_view path, bool& isDirectory) = 0;
  // Makes one folder whose parent exists; false when it was not made.
  virtual bool createDirectoryAtPath(std::string_view path) = 0;
  // Starts uploading a local file and answers its transaction. What is at `toPath` is replaced when, and only
  // when, the whole file has arrived: until then the file goes by another name in the same folder. Failures
  // and aborts leave nothing of that where the server can still be asked; else the next upload to `toPath`
  // does.
  virtual std::shared_ptr<DMTransaction> putLocalFileAtPath(std::string_view localPath,
                                                            std::string_view toPath) = 0;
};

class DotMacKit {
 public:
  virtual ~DotMacKit() = default;
  // The account configured in the preferences; none while there is none. It sees what is configured now, not
  // what is configured later. `applicationID` tells who asks.
  virtual std::shared_ptr<DMMemberAccount> accountFromPreferencesWithApplicationID(
      std::string_view applicationID) = 0;
  // Takes the user to the service's sign-up page.
  virtual void signUpNewMember() = 0;
  // A session on the iDisk of an account that came from this kit.
  virtual std::unique_ptr<DMiDiskSession> iDiskSessionWithCredentials(
      const std::shared_ptr<DMMemberAccount>& account) = 0;
};

}  // namespace clipwave
