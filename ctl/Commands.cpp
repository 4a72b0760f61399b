#include "ctl/Commands.h"

#include <filesystem>
#include <system_error>

namespace clipwave {

namespace {

// Help of several lines, as it is printed.

constexpr const char* kChannelsHelp =
    R"(One channel a line: its id, its mark for publishing (*), the number of its episodes, its title and its
destination. Never saves.
)";

constexpr const char* kShowHelp =
    R"(Every attribute that is set, by its key, and the episodes. With --json every attribute, absent ones as null,
dates as ISO 8601 in UTC. Never saves.
)";

constexpr const char* kSetHelp =
    R"(Keys are those that show prints. KEY= clears an attribute; booleans are 0 and 1; dates are ISO 8601, such as
2009-03-04T02:05:09Z; paths are seen from the current folder. A vcPath puts another movie in place. Either
all of the values are set or none.
protocolTag is the publish method. 1: into the folder that mediaPath= of the same command names; both URLs
become http://127.0.0.1/ until vcURL= and websiteURL= say others. 2: onto the iDisk of the .Mac account (see
account), with the addresses that belong to it; mediaPath is a path there.
)";

constexpr const char* kPublishHelp =
    R"(Prints the subscription links of the channels published. Files that exist at the destination: --replace
replaces them, --keep keeps them but for the feeds; without either they are replaced when the default
noConfirm is 1, else asked about on a terminal, and elsewhere the run ends. An interrupt cancels the run.
--subscribe has the podcast client on this machine subscribe to what was published.
)";

constexpr const char* kImportHelp =
    R"(An episode for each item of the feed; the movies stay where they are. Importing a feed again makes another
channel. Prints the new channel's title.
)";

constexpr const char* kRecordHelp =
    R"(An episode of what the camera and the microphone take in from now on. The default captureDevice says which
camera (empty: the first one found; test-pattern: a moving picture and a tone that need no hardware). The
movie is NAME.mov, or the first free one of Movie1.mov, Movie2.mov and so on, in the channel's folder below
Movies/Clipwave. Prints its path. An interrupt ends the recording early and keeps it.
)";

constexpr const char* kAccountHelp =
    R"(Without options, or with --json alone, the account, but never its password. --server is the WebDAV address of
the iDisk's top level, --home-page that of the home pages. An empty text goes back to the initial value;
another server or member, or an empty one, forgets the former account's password. With --server, --member or
--password the password is asked for at the terminal, or else read from standard input as one line; an empty
one keeps what is kept. It is kept where the desktop keeps secrets, or without such a place in a file that
only you can read. Then, and with --check, the server is asked whether it accepts it. Over plain http to
another machine only with --allow-plain-http. Does not open the library: a channel takes another member or
home page over when set gives it protocolTag=2 again.
)";

}  // namespace

const std::vector<Command>& commandTable() {
  static const std::vector<Command> kTable = {
      {"channels", "", "List the library's channels", kChannelsHelp, 0, true, runChannels},
      {"show", "[CHANNEL] [--json]", "Show the whole library or one channel", kShowHelp, 0, true, runShow},
      {"new", "[TITLE]", "Add a channel",
       "The channel gets its defaults, then the title. Prints the title that it has.\n", 0, true, runNew},
      {"open", "FILE...", "Add a channel with an episode for each movie file",
       "As when the desktop opens the files with Clipwave. Prints the new channel's title.\n", 1, true,
       runOpen},
      {"add", "CHANNEL FILE...", "Add an episode to a channel for each movie file",
       "As when the files are dropped onto the channel.\n", 2, true, runAdd},
      {"set", "CHANNEL[/EPISODE] KEY=VALUE...", "Set attributes of a channel or an episode", kSetHelp, 2,
       true, runSet},
      {"feed", "CHANNEL", "Write a channel's feed to standard output", "Never saves.\n", 1, true, runFeed},
      {"publish", "[--replace|--keep] [--subscribe]", "Publish every channel marked for it", kPublishHelp, 0,
       true, runPublish},
      {"import", "FILE|URL", "Add a channel from an existing feed", kImportHelp, 1, true, runImport},
      {"message", "[CHANNEL...]", "Write an invitation with the channels' subscription links",
       "The channels named, or all of them. Never saves.\n", 0, true, runMessage},
      {"record", "CHANNEL --seconds N [--name NAME]", "Record an episode with the camera", kRecordHelp, 3,
       true, runRecord},
      {"account",
       "[--server URL] [--member NAME] [--home-page URL] [--allow-plain-http|--forbid-plain-http] "
       "[--password] [--check] [--json]",
       "Show, set or check the .Mac member account", kAccountHelp, 0, false, runAccount},
      {"defaults", "[KEY[=VALUE]...]", "Show or set the user defaults",
       "Without arguments all of them. KEY= goes back to the initial value; booleans are 0 and 1.\n", 0,
       false, runDefaults},
  };
  return kTable;
}

ExitStatus usageError(const std::string& message) {
  printError("clipwavectl", message);
  return kUsage;
}

ExitStatus failure(const Error& error) {
  return failure(error.localizedDescription);
}

ExitStatus failure(const std::string& message) {
  printError("clipwavectl", message);
  return kFailed;
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

}  // namespace clipwave
