// The words in which the program and its commands are described.
#include "ctl/CommandTable.h"

#include <algorithm>

#include "ctl/Commands.h"

namespace clipwave {

namespace {

using Kind = Argument::Kind;
using Count = Argument::Count;

const Argument kChannel{"CHANNEL", Kind::Channel};
const Option kJSON{"--json", "", "print JSON, for programs"};

const std::string kNeverSaves = "Never saves.";

const std::vector<std::string> kShowHelp = {
    "Every attribute that is set, by its key, and the episodes. As JSON every attribute, absent ones as "
    "null, "
    "dates as ISO 8601 in UTC. Never saves."};

const std::vector<std::string> kSetHelp = {
    "Keys are those that show prints. KEY= clears an attribute; booleans are 0 and 1; dates are ISO 8601, "
    "such "
    "as 2009-03-04T02:05:09Z; paths are seen from the current folder. A vcPath puts another movie in place. "
    "Either all of the values are set or none.",
    "protocolTag is the publish method. 1: into the folder that mediaPath= of the same command names; both "
    "URLs become http://127.0.0.1/ until vcURL= and websiteURL= say others. 2: onto the iDisk of the .Mac "
    "account (see account), with the addresses that belong to it; mediaPath is a path there."};

const std::vector<std::string> kPublishHelp = {
    "Prints the subscription links of the channels published. What becomes of files that exist at the "
    "destination --replace and --keep say; without either they are replaced when the default noConfirm is 1, "
    "else asked about on a terminal, and elsewhere the run ends. An interrupt cancels the run."};

const std::vector<std::string> kImportHelp = {
    "An episode for each item of the feed; the movies stay where they are. The address may be a subscription "
    "link, which begins with itpc:, pcast: or feed:. Importing a feed again makes another channel. Prints "
    "the "
    "new channel's title."};

const std::vector<std::string> kRecordHelp = {
    "An episode of what the camera and the microphone take in from now on. The default captureDevice says "
    "which camera (empty: the first one found; test-pattern: a moving picture and a tone that need no "
    "hardware). The movie lies in the channel's folder below Movies/Clipwave. Prints its path. An interrupt "
    "ends the recording early and keeps it."};

const std::vector<std::string> kAccountHelp = {
    "Without options, or with --json alone, shows the account, but never its password. An empty text goes "
    "back "
    "to the initial value; another server or member, or an empty one, forgets the former account's password.",
    "With --server, --member or --password the password is asked for at the terminal, or else read from "
    "standard input as one line; an empty one keeps what is kept. It is kept where the desktop keeps "
    "secrets, "
    "or without such a place in a file that only you can read. Then, and with --check, the server is asked "
    "whether it accepts it.",
    "Does not open the library: a channel takes another member or home page over when set gives it "
    "protocolTag=2 again."};

const std::vector<Option> kAccountOptions = {
    {"--server", "URL", "the WebDAV address of the iDisk's top level"},
    {"--member", "NAME", "the member's name"},
    {"--home-page", "URL", "the address of the home pages"},
    {"--allow-plain-http", "", "send the password over plain http, too", 1},
    {"--forbid-plain-http", "", "send it over https only, but on this machine", 1},
    {"--password", "", "take another password"},
    {"--check", "", "ask the server whether it accepts name and password"},
    kJSON};

}  // namespace

const std::vector<Command>& commandTable() {
  static const std::vector<Command> kTable = {
      {"channels",
       {},
       {},
       "List the library's channels",
       {"One channel a line: its id, its mark for publishing (*), the number of its episodes, its title and "
        "its destination. Never saves."},
       true,
       false,
       runChannels},
      {"show",
       {{"CHANNEL", Kind::Channel, Count::AtMostOne}},
       {kJSON},
       "Show the whole library or one channel",
       kShowHelp,
       true,
       false,
       runShow},
      {"new",
       {{"TITLE", Kind::Text, Count::AtMostOne}},
       {},
       "Add a channel",
       {"The channel gets its defaults, then the title. Prints the title that it has."},
       true,
       false,
       runNew},
      {"open",
       {{"FILE", Kind::File, Count::OneOrMore}},
       {},
       "Add a channel with an episode for each movie file",
       {"As when the desktop opens the files with Clipwave. Prints the new channel's title."},
       true,
       false,
       runOpen},
      {"add",
       {kChannel, {"FILE", Kind::File, Count::OneOrMore}},
       {},
       "Add an episode to a channel for each movie file",
       {"As when the files are dropped onto the channel."},
       true,
       false,
       runAdd},
      {"set",
       {{"CHANNEL[/EPISODE]", Kind::ChannelOrEpisode}, {"KEY=VALUE", Kind::Assignment, Count::OneOrMore}},
       {},
       "Set attributes of a channel or an episode",
       kSetHelp,
       true,
       false,
       runSet},
      {"feed",
       {kChannel},
       {},
       "Write a channel's feed to standard output",
       {kNeverSaves},
       true,
       false,
       runFeed},
      {"publish",
       {},
       {{"--replace", "", "replace files that exist at the destination", 1},
        {"--keep", "", "keep them, but for the feeds", 1},
        {"--subscribe", "", "have this machine's podcast client subscribe to what was published"}},
       "Publish every channel marked for it",
       kPublishHelp,
       true,
       false,
       runPublish},
      {"import",
       {{"FILE|URL", Kind::File}},
       {},
       "Add a channel from an existing feed",
       kImportHelp,
       true,
       false,
       runImport},
      {"message",
       {{"CHANNEL", Kind::Channel, Count::Any}},
       {},
       "Write an invitation with the channels' subscription links",
       {"Of the channels named, or of all of them. Never saves."},
       true,
       false,
       runMessage},
      {"record",
       {kChannel},
       {{"--seconds", "N", "how long the recording becomes", 0, true},
        {"--name", "NAME", "the movie is NAME.mov; else the first free one of Movie1.mov, Movie2.mov ..."}},
       "Record an episode with the camera",
       kRecordHelp,
       true,
       false,
       runRecord},
      {"account",
       {},
       kAccountOptions,
       "Show, set or check the .Mac member account",
       kAccountHelp,
       false,
       true,
       runAccount},
      {"defaults",
       {{"KEY[=VALUE]", Kind::Setting, Count::Any}},
       {},
       "Show or set the user defaults",
       {"Without arguments all of them. KEY= goes back to the initial value; booleans are 0 and 1."},
       false,
       false,
       runDefaults},
  };
  return kTable;
}

const Command* commandNamed(const std::string& name) {
  const auto command = std::ranges::find(commandTable(), name, &Command::name);
  return command == commandTable().end() ? nullptr : &*command;
}

const ProgramDescription& programDescription() {
  static const ProgramDescription kProgram = {
      "Works on the Clipwave library from the command line",
      {"The library holds channels, each of them one podcast feed with its episodes. It is the library of "
       "the "
       "window of clipwave(1), and what a command does to it the window would do, too; no display is needed. "
       "Only one process has a library open at a time.",
       "CHANNEL is a channel's title, or its id as channels lists it; EPISODE the title of one of its "
       "episodes, or its id. Options may stand anywhere behind the command; those behind a word \"--\" are "
       "none.",
       "What a command answers goes to standard output, what is wrong to standard error as \"title: "
       "message\"."},
      {{"--verbose", "", "show log lines on standard error"},
       {"--help", "", "show this, or with a command what it takes"},
       {"--version", "", "show the version"}},
      {{"0", "done"},
       {"1", "failed; what is wrong was told"},
       {"2", "wrong usage; nothing was done"},
       {"75", "the library is open elsewhere; nothing was done"}},
      {{"XDG_DATA_HOME", "where the library's folder lies; ~/.local/share without it"},
       {"XDG_CONFIG_HOME", "where the folder of the user defaults lies; ~/.config without it"},
       {"XDG_DATA_DIRS", "where publish --subscribe looks for the podcast client's desktop entry, besides"},
       {"TZ", "the time zone of this machine"}},
      {{"$XDG_DATA_HOME/Clipwave/Clipwave.xml", "the library"},
       {"$XDG_DATA_HOME/Clipwave/Clipwave.xml.lock", "its lock, while a process has it open"},
       {"$XDG_CONFIG_HOME/Clipwave/defaults.plist", "the user defaults"},
       {"$XDG_CONFIG_HOME/Clipwave/password",
        "the .Mac member's password, where the desktop has no place for secrets"},
       {"~/Movies/Clipwave/TITLE/", "the recordings of a channel"},
       {"/tmp/xmlFile.*, /tmp/TITLE.pcast",
        "feeds and subscription files of publish runs; they are left there"}},
      {{"clipwavectl open ~/Movies/bread.mov ~/Movies/knives.mp4",
        "makes a channel with two episodes, and prints its title."},
       {"clipwavectl set \"Channel 01\" vcTitle=Cooking mediaPath=$HOME/Sites/cooking "
        "vcURL=http://example.org/cooking",
        "names it, and says where it goes and where the web shows that."},
       {"clipwavectl publish --replace",
        "copies the movies, writes the feeds, and prints the links; fit for a timer."},
       {"clipwavectl import itpc://example.org/bread/feed.xml", "makes a channel of a feed that exists."}}};
  return kProgram;
}

}  // namespace clipwave
