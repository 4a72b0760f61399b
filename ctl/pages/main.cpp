// Writes the companion's manual page from the table of its commands: VERSION DATE FILE.
#include <fstream>
#include <iostream>
#include <sstream>

#include "ctl/CommandHelp.h"
#include "ctl/CommandTable.h"

namespace clipwave {

namespace {

// Text as it is for troff: what would steer it, and what it would set as another character, is escaped.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '\'':
        result += "\\(aq";
        break;
      case '"':
        result += "\\(dq";
        break;
      case '~':
        result += "\\(ti";
        break;
      default:
        result += c;
    }
  }
  return result;
}

// The same, every hyphen one that can be copied into a terminal.
std::string typed(const std::string& text) {
  std::string result;
  for (const char c : escaped(text)) result += c == '-' ? "\\-" : std::string(1, c);
  return result;
}

std::string bold(const std::string& text) {
  return "\\fB" + typed(text) + "\\fR";
}
std::string italic(const std::string& text) {
  return "\\fI" + typed(text) + "\\fR";
}

// Running text, in lines of their usual length: options are set off, and so are references to other pages.
std::string prose(const std::string& text) {
  constexpr std::size_t kLongestLine = 80;
  std::istringstream words(text);
  std::string result;
  std::string line;
  for (std::string word; words >> word;) {
    const std::size_t page = word.find("(1)");
    const std::size_t end = word.starts_with("--") ? word.find_first_not_of("-abcdefghijklmnopqrstuvwxyz")
                            : page != std::string::npos ? page
                                                        : 0;
    const std::string rest = end == std::string::npos ? "" : word.substr(end);
    const std::string part = end == 0 ? escaped(word) : bold(word.substr(0, end)) + escaped(rest);
    if (!line.empty() && line.size() + 1 + part.size() > kLongestLine) {
      result += line + "\n";
      line.clear();
    }
    // A line that begins with a full stop is a request.
    line += !line.empty() ? " " : word.starts_with('.') ? "\\&" : "";
    line += part;
  }
  return result + line;
}

std::string textOfOption(const Option& option) {
  return bold(option.name) + (option.value.empty() ? "" : " " + italic(option.value));
}

// The parts of a synopsis: names of commands and options bold, what stands for something else italic.
std::string synopsis(const std::string& text) {
  std::string result;
  for (std::size_t start = 0; start < text.size();) {
    const bool isCode = (text[start] >= 'a' && text[start] <= 'z') || text.substr(start, 2) == "--";
    const bool isPlace = text[start] >= 'A' && text[start] <= 'Z';
    const std::size_t end =
        isCode    ? std::min(text.find_first_not_of("-abcdefghijklmnopqrstuvwxyz", start), text.size())
        : isPlace ? std::min(text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", start), text.size())
                  : start + 1;
    const std::string part = text.substr(start, end - start);
    result += isCode ? bold(part) : isPlace ? italic(part) : escaped(part);
    start = end;
  }
  return result;
}

class Page {
 public:
  explicit Page(std::ostream& out) : out_(out) {}

  void section(const std::string& title) { out_ << ".SH " << title << '\n'; }
  void paragraphs(const std::vector<std::string>& texts) {
    bool isFirst = true;
    for (const std::string& text : texts) {
      if (!isFirst) out_ << ".PP\n";
      isFirst = false;
      out_ << prose(text) << '\n';
    }
  }
  void item(const std::string& heading, const std::string& text) {
    out_ << ".TP\n" << heading << '\n' << prose(text) << '\n';
  }
  void items(const std::vector<Option>& options) {
    for (const Option& option : options) item(textOfOption(option), sentence(option.help));
  }
  void items(const std::vector<Term>& terms, std::string (*style)(const std::string&)) {
    for (const Term& term : terms) item(style(term.name), sentence(term.meaning));
  }
  void command(const Command& command) {
    std::string line;
    for (const std::string& part : synopsisPartsOf(command))
      line += (line.empty() ? "" : " ") + synopsis(part);
    out_ << ".SS \"" << escaped(command.summary) << "\"\n.HP\n" << line << '\n';
    for (const std::string& paragraph : command.help) out_ << ".PP\n" << prose(paragraph) << '\n';
    items(command.options);
  }

 private:
  static std::string sentence(std::string text) {
    if (text.front() >= 'a' && text.front() <= 'z')
      text.front() = static_cast<char>(text.front() - 'a' + 'A');
    return text.ends_with('.') ? text : text + ".";
  }

  std::ostream& out_;
};

void writePage(std::ostream& out, const std::string& version, const std::string& date) {
  const ProgramDescription& program = programDescription();
  Page page(out);
  out << ".TH CLIPWAVECTL 1 " << date << " \"Clipwave " << version << "\" \"User Commands\"\n.nh\n.ad l\n";
  page.section("NAME");
  std::string summary = program.summary;
  summary.front() = 'w';
  out << "clipwavectl \\- " << summary << '\n';
  page.section("SYNOPSIS");
  out << "\\fBclipwavectl\\fR [\\fIOPTION\\fR...] \\fICOMMAND\\fR [\\fIARGUMENT\\fR...]\n";
  page.section("DESCRIPTION");
  page.paragraphs(program.description);
  page.section("OPTIONS");
  page.items(program.options);
  page.section("COMMANDS");
  for (const Command& command : commandTable()) page.command(command);
  page.section("\"EXIT STATUS\"");
  page.items(program.exitStatuses, bold);
  page.section("ENVIRONMENT");
  page.items(program.environment, bold);
  page.section("FILES");
  page.items(program.files, italic);
  page.section("EXAMPLES");
  page.items(program.examples, typed);
  page.section("\"SEE ALSO\"");
  out << "\\fBclipwave\\fR(1)\n";
}

}  // namespace

}  // namespace clipwave

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  std::ofstream file(argv[3]);
  clipwave::writePage(file, argv[1], argv[2]);
  file.close();
  if (file) return 0;
  std::cerr << argv[3] << " cannot be written.\n";
  return 1;
}
