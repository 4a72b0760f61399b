// account: the .Mac member account in the settings, and its password in the place of secrets.
#include <iostream>

#include "ctl/Commands.h"
#include "ctl/PasswordPrompt.h"
#include "ctl/RecordText.h"
#include "platform/dotmac/MemberAddress.h"
#include "platform/dotmac/MemberSettings.h"
#include "platform/foundation/JSON.h"
#include "transfer/CopyFiles.h"

namespace clipwave {

namespace {

constexpr const char* kReadableOnTheWay =
    "Over plain http anyone on the way can read the password. Use https, or say --allow-plain-http.";
constexpr const char* kNoAccount = "No .Mac account is set up. Say --server and --member.";

struct AccountOptions {
  std::optional<std::string> server, member, homePage;  // "" goes back to the initial value
  std::optional<bool> allowsPlainHTTP;
  bool wantsPassword = false;
  bool check = false;
  bool asJSON = false;

  bool setsAnything() const { return server || member || homePage || allowsPlainHTTP || wantsPassword; }
  bool asksForPassword() const { return server || member || wantsPassword; }
};

AccountOptions optionsFromArguments(const CommandArguments& arguments) {
  AccountOptions options{
      .server = arguments.value("--server"),
      .member = arguments.value("--member"),
      .homePage = arguments.value("--home-page"),
      .allowsPlainHTTP = {},
      .wantsPassword = arguments.has("--password"),
      .check = arguments.has("--check"),
      .asJSON = arguments.has("--json"),
  };
  const bool allows = arguments.has("--allow-plain-http");
  if (allows || arguments.has("--forbid-plain-http")) options.allowsPlainHTTP = allows;
  return options;
}

// The account as it is, or as it is to be.
SecretAccount accountOf(Companion& companion, const AccountOptions& options) {
  // Neither has an initial value to go back to.
  const auto chosen = [&companion](const std::optional<std::string>& option, const char* key) {
    return option ? *option : companion.defaults().string(key);
  };
  return {chosen(options.server, MemberSettings::kAddress), chosen(options.member, MemberSettings::kName)};
}

bool isConfigured(const SecretAccount& account) {
  return !account.address.empty() && !account.member.empty();
}

ExitStatus show(Companion& companion, bool asJSON) {
  const UserDefaultsController& defaults = companion.defaults();
  const SecretAccount account = accountOf(companion, {});
  const auto password = companion.services().secrets.password(account);
  const bool hasPassword = password && password->has_value();
  const bool allowsPlainHTTP = defaults.boolean(MemberSettings::kAllowsPlainHTTP);
  const std::string expiry = valueText(defaults.value(MemberSettings::kExpiryDate));
  if (asJSON) {
    const auto orNull = [](const std::string& text) { return text.empty() ? Value() : Value(text); };
    std::cout << JSONFromValue(Dictionary{{"server", orNull(account.address)},
                                          {"member", orNull(account.member)},
                                          {"homePage", orNull(defaults.string(MemberSettings::kHomePage))},
                                          {"allowsPlainHTTP", allowsPlainHTTP},
                                          {"expiryDate", orNull(expiry)},
                                          {"hasPassword", hasPassword}})
              << '\n';
  } else {
    const auto orNone = [](const std::string& text) { return text.empty() ? "none" : text; };
    std::cout << "server: " << orNone(account.address) << "\nmember: " << orNone(account.member)
              << "\nhome page: " << orNone(defaults.string(MemberSettings::kHomePage))
              << "\nplain http: " << (allowsPlainHTTP ? "allowed" : "not allowed")
              << "\nexpires: " << (expiry.empty() ? "never" : expiry)
              << "\npassword: " << (hasPassword ? "kept" : "none") << '\n';
  }
  return password ? kDone : failure(password.error());
}

// Whether the settings may become so; what is wrong was reported.
bool isAcceptable(Companion& companion, const AccountOptions& options) {
  for (const auto& [name, url] : {std::pair("--server", options.server), {"--home-page", options.homePage}}) {
    if (!url || url->empty()) continue;
    if (const auto trouble = troubleWithMemberAddress(*url)) {
      usageError(std::string(name) + ": " + *trouble);
      return false;
    }
  }
  const bool allowsPlainHTTP =
      options.allowsPlainHTTP.value_or(companion.defaults().boolean(MemberSettings::kAllowsPlainHTTP));
  if (options.server && isReadableOnTheWay(*options.server) && !allowsPlainHTTP) {
    usageError(kReadableOnTheWay);
    return false;
  }
  if (options.wantsPassword && !isConfigured(accountOf(companion, options))) {
    usageError(kNoAccount);
    return false;
  }
  return true;
}

Result<void> store(Companion& companion, const AccountOptions& options) {
  std::vector<std::pair<const char*, Value>> settings;
  for (const auto& [key, text] : {std::pair(MemberSettings::kAddress, options.server),
                                  {MemberSettings::kName, options.member},
                                  {MemberSettings::kHomePage, options.homePage}})
    if (text) settings.emplace_back(key, text->empty() ? Value() : Value(*text));
  if (options.allowsPlainHTTP)
    settings.emplace_back(MemberSettings::kAllowsPlainHTTP, *options.allowsPlainHTTP);
  for (const auto& [key, value] : settings)
    if (auto set = companion.defaults().setValue(key, value); !set) return set;
  return {};
}

// Asks the server whether it takes the name and the password.
ExitStatus check(Companion& companion) {
  const ApplicationServices& services = companion.services();
  const auto account = services.dotMac.accountFromPreferencesWithApplicationID(CopyFiles::kApplicationID);
  if (!account) return failure(kNoAccount);
  // The service could only say that the password was not accepted, which nobody has been shown.
  if (isReadableOnTheWay(services.defaults.string(MemberSettings::kAddress)) &&
      !services.defaults.boolean(MemberSettings::kAllowsPlainHTTP))
    return failure(kReadableOnTheWay);
  account->setIsSynchronous(true);
  const int answer = account->validateCredentials();
  if (answer == kDMCredentialsAccepted) {
    std::cout << hostAndPortOf(services.defaults.string(MemberSettings::kAddress)) << " accepts "
              << account->name() << ".\n";
    return kDone;
  }
  const auto messages = std::make_shared<CopyFiles>(DotMacCopyServices{
      services.application, services.runLoop, services.defaults, services.log, services.dotMac});
  printError(".Mac Error!", messages->errorMessageForType(answer));
  printError("clipwavectl", account->errorDescription());
  return kFailed;
}

}  // namespace

ExitStatus runAccount(Companion& companion, const CommandArguments& arguments) {
  const AccountOptions options = optionsFromArguments(arguments);
  if (options.asJSON && (options.setsAnything() || options.check))
    return usageError("--json shows the account; it goes with no other option.");
  if (const auto& error = companion.defaults().loadError()) return failure(*error);
  if (!options.setsAnything() && !options.check) return show(companion, options.asJSON);
  if (!isAcceptable(companion, options)) return kUsage;

  // Asked for before anything is set: an interrupt leaves all as it was.
  const SecretAccount before = accountOf(companion, {});
  const SecretAccount account = accountOf(companion, options);
  std::optional<std::string> password;
  if (options.asksForPassword() && isConfigured(account)) {
    password =
        readPassword("Password for " + account.member + " at " + hostAndPortOf(account.address) + ": ");
    if (!password) printError("clipwavectl", "No password was given; one that is kept stays.");
  }
  if (const auto stored = store(companion, options); !stored) return failure(stored.error());
  SecretStore& secrets = companion.services().secrets;
  if (password) {
    if (const auto kept = secrets.setPassword(account, *password); !kept) return failure(kept.error());
  }
  // A password whose account goes would lie where no command reaches it.
  if (isConfigured(before) && before != account) {
    if (const auto forgotten = secrets.setPassword(before, ""); !forgotten) return failure(forgotten.error());
  }
  const UserDefaultsController& defaults = companion.defaults();
  if (isConfigured(account) && !defaults.isSetByUser(MemberSettings::kHomePage))
    printError("clipwavectl", "No home page is set: feeds will link to movies at " +
                                  defaults.string(MemberSettings::kHomePage) + ". Say --home-page.");
  return options.check || password ? check(companion) : kDone;
}

}  // namespace clipwave
