// The words in which the program and its commands are described.
#include "ctl/CommandTable.h"

#include <algorithm>

#include "ctl/Commands.h"

namespace clipwave {

namespace {

using Kind = Argument::Kind;
using Count = Argument::Count;

const Argument kChannel{"CHANNEL", Kind::Channel};
const Option kJSON{.name = "--json", .help = "print JSON, for programs"};

const std::vector<std::string> kShowHelp = {
    "Every attribute that is set, by its key, and the episodes. As JSON every attribute, absent ones as "
    "null, dates as ISO 8601 in UTC. Never saves."};

const std::vector<std::string> kSetHelp = {
    "Keys are those that show prints. KEY= clears an attribute; booleans are 0 and 1; dates are ISO 8601, "
    "such as 2009-03-04T02:05:09Z; paths are seen from the current folder. A vcPath puts another movie in "
    "place. Either all of the values are set or none.",
    "protocolTag is the publish method. 1: into the folder that mediaPath= of the same command names; both "
    "URLs become http://127.0.0.1/ until vcURL= and websiteURL= say others; until vcURL= does, nothing is "
    "published. "
    "2: onto the iDisk of the .Mac account (see account), with the addresses that belong to it; mediaPath is "
    "a path there."};

const std::vector<std::string> kPublishHelp = {
    "Prints the subscription links of the channels published. What becomes of files that exist at the "
    "destination --replace and --keep say; without either they are replaced when the default noConfirm is 1, "
    "else asked about on a terminal, and elsewhere the run ends. An interrupt cancels the run."};

const std::vector<std::string> kImportHelp = {
    "An episode for each item of the feed; the movies stay where they are. The address may be a subscription "
    "link, which begins with itpc:, pcast: or feed:. Importing a feed again makes another channel. Prints "
    "the new channel's title."};

const std::vector<std::string> kRecordHelp = {
    "An episode of what the camera and the microphone take in from now on. The default captureDevice says "
    "which camera (empty: the first one found; test-pattern: a moving picture and a tone that need no "
    "hardware). The movie lies in the channel's folder below Movies/Clipwave. Prints its path. An interrupt "
    "ends the recording early and keeps it."};

const std::vector<std::string> kAccountHelp = {
    "Without options, or with --json alone, shows the account, but never its password. An empty text goes "
    "back to the initial value; another server or member, or an empty one, forgets the former account's "
    "password.",
    "With --server, --member or --password the password is asked for at the terminal, or else read from "
    "standard input as one line; an empty one keeps what is kept. It is kept where the desktop keeps "
    "secrets, or without such a place in a file that only you can read. Then, and with --check, the server "
    "is asked whether it accepts it.",
    "Does not open the library: a channel takes another member or home page over when set gives it "
    "protocolTag=2 again."};

const std::vector<Option> kPublishOptions = {
    {.name = "--replace", .help = "replace files that exist at the destination", .group = 1},
    {.name = "--keep", .help = "keep them, but for the feeds", .group = 1},
    {.name = "--subscribe", .help = "have this machine's podcast client subscribe to what was published"}};

const std::vector<Option> kRecordOptions = {
    {.name = "--seconds", .value = "N", .help = "how long the recording becomes", .isRequired = true},
    {.name = "--name",
     .value = "NAME",
     .help = "the movie is NAME.mov; else the first free one of Movie1.mov, Movie2.mov ..."}};

const std::vector<Option> kAccountOptions = {
    {.name = "--server", .value = "URL", .help = "the WebDAV address of the iDisk's top level"},
    {.name = "--member", .value = "NAME", .help = "the member's name"},
    {.name = "--home-page", .value = "URL", .help = "the address of the home pages"},
    {.name = "--allow-plain-http", .help = "send the password over plain http, too", .group = 1},
    {.name = "--forbid-plain-http", .help = "send it over https only, but on this machine", .group = 1},
    {.name = "--password", .help = "take another password"},
    {.name = "--check", .help = "ask the server whether it accepts name and password"},
    kJSON};

const std::vector<Command> kTable = {
    {.name = "channels",
     .summary = "List the library's channels",
     .help = {"One channel a line: its id, its mark for publishing (*), the number of its episodes, its "
              "title and its destination. Never saves."},
     .opensLibrary = true,
     .run = runChannels},
    {.name = "show",
     .arguments = {{"CHANNEL", Kind::Channel, Count::AtMostOne}},
     .options = {kJSON},
     .summary = "Show the whole library or one channel",
     .help = kShowHelp,
     .opensLibrary = true,
     .run = runShow},
    {.name = "new",
     .arguments = {{"TITLE", Kind::Text, Count::AtMostOne}},
     .summary = "Add a channel",
     .help = {"The channel gets its defaults, then the title. Prints the title that it has."},
     .opensLibrary = true,
     .run = runNew},
    {.name = "open",
     .arguments = {{"FILE", Kind::File, Count::OneOrMore}},
     .summary = "Add a channel with an episode for each movie file",
     .help = {"As when the desktop opens the files with Clipwave. Prints the new channel's title."},
     .opensLibrary = true,
     .run = runOpen},
    {.name = "add",
     .arguments = {kChannel, {"FILE", Kind::File, Count::OneOrMore}},
     .summary = "Add an episode to a channel for each movie file",
     .help = {"As when the files are dropped onto the channel."},
     .opensLibrary = true,
     .run = runAdd},
    {.name = "set",
     .arguments = {{"CHANNEL[/EPISODE]", Kind::ChannelOrEpisode},
                   {"KEY=VALUE", Kind::Assignment, Count::OneOrMore}},
     .summary = "Set attributes of a channel or an episode",
     .help = kSetHelp,
     .opensLibrary = true,
     .run = runSet},
    {.name = "feed",
     .arguments = {kChannel},
     .summary = "Write a channel's feed to standard output",
     .help = {"Never saves."},
     .opensLibrary = true,
     .run = runFeed},
    {.name = "publish",
     .options = kPublishOptions,
     .summary = "Publish every channel marked for it",
     .help = kPublishHelp,
     .opensLibrary = true,
     .run = runPublish},
    {.name = "import",
     .arguments = {{"FILE|URL", Kind::File}},
     .summary = "Add a channel from an existing feed",
     .help = kImportHelp,
     .opensLibrary = true,
     .run = runImport},
    {.name = "message",
     .arguments = {{"CHANNEL", Kind::Channel, Count::Any}},
     .summary = "Write an invitation with the channels' subscription links",
     .help = {"Of the channels named, or of all of them. Never saves."},
     .opensLibrary = true,
     .run = runMessage},
    {.name = "record",
     .arguments = {kChannel},
     .options = kRecordOptions,
     .summary = "Record an episode with the camera",
     .help = kRecordHelp,
     .opensLibrary = true,
     .run = runRecord},
    {.name = "account",
     .options = kAccountOptions,
     .summary = "Show, set or check the .Mac member account",
     .help = kAccountHelp,
     .mayMeetSecrets = true,
     .run = runAccount},
    {.name = "defaults",
     .arguments = {{"KEY[=VALUE]", Kind::Setting, Count::Any}},
     .summary = "Show or set the user defaults",
     .help = {"Without arguments all of them. KEY= goes back to the initial value; booleans are 0 and 1."},
     .run = runDefaults},
};

}  // namespace

const std::vector<Command>& commandTable() {
  return kTable;
}

const Command* commandNamed(const std::string& name) {
  const auto command = std::ranges::find(commandTable(), name, &Command::name);
  return command == commandTable().end() ? nullptr : &*command;
}

const ProgramDescription& programDescription() {
  static const ProgramDescription kProgram = {
      .summary = "Works on the Clipwave library from the command line",
      .description = {"The library holds channels, each of them one podcast feed with its episodes. It is "
                      "the library of the window of clipwave(1), and what a command does to it the window "
                      "would do, too; no display is needed. Only one process has a library open at a time.",
                      "CHANNEL is a channel's title, or its id as channels lists it; EPISODE the title of "
                      "one of its episodes, or its id. Options may stand anywhere behind the command; those "
                      "behind a word \"--\" are none.",
                      "What a command answers goes to standard output, what is wrong to standard error as "
                      "\"title: message\"."},
      .options = {{.name = "--verbose", .help = "show log lines on standard error"},
                  {.name = "--help", .help = "show this, or with a command what it takes"},
                  {.name = "--version", .help = "show the version"}},
      .exitStatuses = {{"0", "done"},
                       {"1", "failed; what is wrong was told"},
                       {"2", "wrong usage; nothing was done"},
                       {"75", "the library is open elsewhere; nothing was done"}},
      .environment = {{"XDG_DATA_HOME", "where the library's folder lies; ~/.local/share without it"},
                      {"XDG_CONFIG_HOME", "where the folder of the user defaults lies; ~/.config without it"},
                      {"XDG_DATA_DIRS",
                       "where publish --subscribe looks for the podcast client's desktop entry, besides"},
                      {"TZ", "the time zone of this machine"}},
      .files = {{"$XDG_DATA_HOME/Clipwave/Clipwave.xml", "the library"},
                {"$XDG_DATA_HOME/Clipwave/Clipwave.xml.lock", "its lock, while a process has it open"},
                {"$XDG_CONFIG_HOME/Clipwave/defaults.plist", "the user defaults"},
                {"$XDG_CONFIG_HOME/Clipwave/password",
                 "the .Mac member's password, where the desktop has no place for secrets"},
                {"~/Movies/Clipwave/TITLE/", "the recordings of a channel"},
                {"/tmp/xmlFile.*, /tmp/TITLE.pcast",
                 "feeds and subscription files of publish runs; they are left there"}},
      .examples = {{"clipwavectl open ~/Movies/bread.mov ~/Movies/knives.mp4",
                    "makes a channel with two episodes, and prints its title."},
                   {"clipwavectl set \"Channel 01\" vcTitle=Cooking mediaPath=$HOME/Sites/cooking "
                    "vcURL=http://example.org/cooking",
                    "names it, and says where it goes and where the web shows that."},
                   {"clipwavectl publish --replace",
                    "copies the movies, writes the feeds, and prints the links; fit for a timer."},
                   {"clipwavectl import itpc://example.org/bread/feed.xml",
                    "makes a channel of a feed that exists."}}};
  return kProgram;
}

}  // namespace clipwave
