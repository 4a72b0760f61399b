#include "desktop/DesktopProgram.h"

#include <QApplication>
#include <QEventLoop>
#include <QSessionManager>

#include "desktop/CommandLine.h"
#include "desktop/QtRunLoop.h"
#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

DesktopProgram::DesktopProgram(const std::string& executablePath)
    : runLoop_(makeQtRunLoop(clock_)),
      files_(makeFileManager()),
      shell_(*runLoop_, *files_,
             [this](const Window& window) { return interface_ ? interface_->widgetOf(window) : nullptr; }),
      platform_(std::make_unique<RealPlatform>(executablePath, *runLoop_, clock_, shell_, loader_, log_)) {
  dressApplication();
}

DesktopProgram::~DesktopProgram() {
  // The windows go before what they show.
  signals_.reset();
  instance_.reset();
  arrivals_.reset();
  interface_.reset();
  program_.reset();
}

void DesktopProgram::dressApplication() {
  QApplication::setApplicationName(QStringLiteral("clipwave"));
  QApplication::setApplicationDisplayName(QStringLiteral("Clipwave"));
  QGuiApplication::setDesktopFileName(QStringLiteral("clipwave"));
  QApplication::setWindowIcon(imageNamed(QStringLiteral("clipwave")));
  // The program quits by its own rules, after its own questions.
  QApplication::setQuitOnLastWindowClosed(false);
  connect(
      qApp, &QGuiApplication::commitDataRequest, this,
      [this](QSessionManager& session) { commitSession(session); }, Qt::DirectConnection);
}

int DesktopProgram::run(const std::vector<std::string>& arguments) {
  const CommandLine line = commandLineOf(arguments);
  for (const std::string& complaint : line.complaints) log_.write(complaint);
  if (line.exitStatus) return *line.exitStatus;
  const auto library = platform_->services().process.applicationSupportFolder();
  instance_ = std::make_unique<SingleInstance>(*runLoop_, library ? *library : std::string());
  switch (instance_->claim(line.items)) {
    case SingleInstance::Role::Second:
      return 0;
    case SingleInstance::Role::Unreachable:
      platform_->application().runAlertPanel("", SingleInstance::unreachableMessage(),
                                             localized("Alerts", "OK"));
      return 1;
    case SingleInstance::Role::First:
      break;
  }
  if (!start(line.items)) return 1;
  runLoop_->run();
  return 0;
}

bool DesktopProgram::start(const std::vector<std::string>& items) {
  program_ = std::make_unique<ClipwaveProgram>(platform_->services());
  interface_ = std::make_unique<DesktopInterface>(*program_, loader_);
  if (!interface_->refused().isEmpty()) {
    for (const QString& refused : interface_->refused()) log_.write(toText(refused));
    return false;
  }
  if (const auto& error = platform_->defaults().loadError()) platform_->application().presentError(*error);
  program_->controller().awakeFromNib();
  if (platform_->application().isTerminated()) return false;
  interface_->show();
  signals_ = std::make_unique<TerminationSignals>(*runLoop_, [this] { interface_->quit(); });
  arrivals_ = std::make_unique<Arrivals>(*program_);
  if (instance_) {
    instance_->setOnItems([this](const std::vector<std::string>& others, const QByteArray& activationToken) {
      interface_->raise(activationToken);
      arrivals_->take(others);
    });
  }
  if (!items.empty()) runLoop_->performLater([this, items] { arrivals_->take(items); });
  return true;
}

void DesktopProgram::commitSession(QSessionManager& session) {
  if (!interface_ || platform_->application().isTerminated()) return;
  if (!session.allowsInteraction()) {
    // Nobody can be asked: what there is is saved, or the session's end takes it.
    program_->controller().recordHandOff().endRecording();
    program_->delegate().saveAction();
    return;
  }
  interface_->quit();
  // A publish run that is cancelled takes a moment, for which the desktop waits.
  while (interface_->isQuitting()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  session.release();
  if (!platform_->application().isTerminated()) session.cancel();
}

}  // namespace clipwave
