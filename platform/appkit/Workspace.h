// Opening files and URLs with other applications, and telling file types by their content.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/FileManager.h"

namespace clipwave {

class Workspace {
 public:
  virtual ~Workspace() = default;
  // With the default handler. False when nothing could be started.
  virtual bool openFile(std::string_view path) = 0;
  virtual bool openURL(std::string_view url) = 0;
  // With the application of that name among the desktop's applications; where there is none, with the file's
  // default handler.
  virtual bool openFileWithApplication(std::string_view path, std::string_view applicationName) = 0;

  // The application that the user wants for URLs of the scheme, by the name of its desktop entry, such as
  // "player.desktop"; "" where none was chosen.
  virtual std::string defaultApplicationForURLScheme(std::string_view scheme) = 0;
  // Chooses one, in the user's own settings of the desktop. Fails when it is not installed there, or the
  // settings cannot be written.
  virtual Result<void> setDefaultApplicationForURLScheme(std::string_view application,
                                                         std::string_view scheme) = 0;
  // Takes that back: what was chosen before is chosen again.
  virtual Result<void> removeDefaultApplicationForURLScheme(std::string_view application,
                                                            std::string_view scheme) = 0;
};

// Through the desktop's own opener (xdg-open, desktop entries); starts processes and does not wait for them.
std::unique_ptr<Workspace> makeWorkspace(FileManager& files);

// NSHFSTypeOfFile: "'MooV'" for a file whose first bytes are a QuickTime movie's, else "".
std::string HFSTypeOfFile(FileManager& files, std::string_view path);

}  // namespace clipwave
