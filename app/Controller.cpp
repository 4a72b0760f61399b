#include "app/Controller.h"

#include "model/Channel.h"
#include "transfer/CopyFiles.h"
#include "transfer/CopyFilesLocally.h"

namespace clipwave {

namespace {

// The entry may be one text or a list of them; feeds carry one.
std::string mimeType(const Dictionary& documentType) {
  const auto entry = documentType.find("CFBundleTypeMIMETypes");
  if (entry == documentType.end()) return {};
  const Array& list = entry->second.arrayValue();
  return std::string(list.empty() ? entry->second.stringValue() : list.front().stringValue());
}

}  // namespace

Controller::Controller(const ApplicationServices& services, lanternAppDelegate& delegate,
                       MainInterface& interface)
    : services_(services),
      delegate_(delegate),
      interface_(interface),
      languageDataSource_(services.bundle),
      feedPreparation_({services.application,
                        services.files,
                        services.log,
                        interface.channelController,
                        {languageDataSource_, types_}}),
      publishRun_({services.application, services.log, interface.channelController,
                   [this] { return delegate_.managedObjectContext(); },
                   [this](int protocolTag) { return makeBackEnd(protocolTag); }},
                  feedPreparation_,
                  {interface.mainWindow, interface.publishButton, interface.copyStatus,
                   interface.copyStatusTextField, interface.statusWindow, interface.statusTextView}),
      subscriptionHandOff_({services.application, services.files, services.log, services.workspace,
                            interface.channelController, services.generalPasteboard, feedPreparation_}),
      feedImport_({services.application, services.log, services.urls, interface.channelController,
                   interface.vodcastController, interface.imageController, languageDataSource_,
                   channelMappings_, vodcastMappings_},
                  {interface.mainWindow, interface.rssFeedWindow, interface.rssURLBox}),
      episodeListEditing_(
          {services.application, services.files, services.workspace, services.defaults, types_},
          {interface.mainWindow, interface.vcastTableView, interface.channelTableView, interface.previewPane,
           interface.prefWindow, interface.editImagePropsWindow, interface.vodcastController,
           interface.channelController, interface.imageController}),
      channelListEditing_(services.application, interface.mainWindow, interface.vcastTableView,
                          interface.channelController, episodeListEditing_),
      windowLayout_(interface.mainWindow, interface.lowerView, interface.channelController,
                    services.defaults),
      publishMethod_({services.application, interface.channelController, services.dotMac, windowLayout_,
                      [this] { return delegate_.managedObjectContext(); }}),
      captureSettings_(services.application, services.interfaces),
      recordHandOff_({{services.application, services.runLoop, services.files, services.notifications,
                       services.workspace, services.log, services.captureKit},
                      services.process,
                      services.defaults,
                      services.interfaces},
                     {interface.mainWindow, interface.titleTextField, interface.channelController,
                      interface.vodcastController}) {
  installInitialDefaults();
  services_.captureKit.setSettingsDialog(&captureSettings_);
  interface_.vcastTableView.setDelegate(&episodeListEditing_);
  interface_.channelTableView.setDelegate(&episodeListEditing_);
  interface_.publishButton.setAction([this] { publishRun_.save(); });
  interface_.protocolPopUp.setAction(
      [this] { publishMethod_.changePublishMethod(interface_.protocolPopUp); });
}

Controller::~Controller() {
  observations_.clear();
  services_.captureKit.setSettingsDialog(nullptr);
  interface_.protocolPopUp.setAction(nullptr);
  interface_.publishButton.setAction(nullptr);
  interface_.vcastTableView.setDelegate(nullptr);
  interface_.channelTableView.setDelegate(nullptr);
}

void Controller::installInitialDefaults() {
  // Without the resource there are no initial values at all.
  if (!services_.bundle.pathForResource("defaults", "plist")) return;
  Dictionary values = services_.bundle.dictionaryForResource("defaults");
  values["defaultAuthor"] = services_.process.fullUserName();
  services_.defaults.setInitialValues(std::move(values));
}

void Controller::awakeFromNib() {
  observeNotifications();
  observeChannelSelection();
  loadMappings();
  registerForDrags();
  setSortOrders();
  startUpdateCheck();
  loadMovieTypes();
  scrollOptionsToTop();
  observeNewMovies();
  publishRun_.setIsCopying(false);
  addedNewChannel_ = false;
  fetchChannels();
  addFirstChannel();
}

void Controller::awakeWithoutWindow() {
  observeRecordingStarts();
  observeNewMovies();
  loadMappings();
  setSortOrders();
  loadMovieTypes();
  fetchChannels();
}

void Controller::observeNotifications() {
  observations_.push_back(services_.notifications.observe(
      kProtocolDidChange, [this](const Notification&) { publishMethod_.protocolChanged(); }));
  observeRecordingStarts();
}

void Controller::observeRecordingStarts() {
  observations_.push_back(services_.notifications.observe(
      kRecordingStarted,
      [this](const Notification& notification) { recordHandOff_.recordingStarted(notification); }));
}

void Controller::observeChannelSelection() {
  observations_.push_back(interface_.channelController.observeSelectedObjects(
      [this] { observeValueForKeyPath("selectedObjects"); }));
}

void Controller::loadMappings() {
  vodcastMappings_ = feedMappingsFromResource(services_.bundle, "vcmappings");
  channelMappings_ = feedMappingsFromResource(services_.bundle, "channelmappings");
}

void Controller::registerForDrags() {
  interface_.vcastTableView.registerForDraggedTypes({std::string(NSFilenamesPboardType)});
  interface_.channelTableView.registerForDraggedTypes({std::string(NSFilenamesPboardType)});
}

void Controller::setSortOrders() {
  interface_.channelController.setSortDescriptors({{"vcTitle", true}});
  interface_.vodcastController.setSortDescriptors({{"vcPublishDate", false}});
}

void Controller::startUpdateCheck() {
  if (!services_.defaults.boolean("shouldCheckForUpdate")) return;
  updateCheck_ = std::make_unique<UpdateCheck>(
      UpdateCheck::Services{services_.application, services_.workspace, services_.bundle, services_.log,
                            services_.urls, interface_.mainWindow});
  updateCheck_->start(services_.defaults.string("updateURL"));
}

void Controller::loadMovieTypes() {
  types_.clear();
  const Dictionary& info = services_.bundle.infoDictionary();
  const auto documentTypes = info.find("CFBundleDocumentTypes");
  if (documentTypes == info.end()) return;
  for (const Value& entry : documentTypes->second.arrayValue()) {
    const Dictionary& documentType = entry.dictionaryValue();
    const auto extensions = documentType.find("CFBundleTypeExtensions");
    if (extensions == documentType.end()) continue;
    for (const Value& extension : extensions->second.arrayValue()) {
      types_[std::string(extension.stringValue())] = mimeType(documentType);
    }
  }
}

void Controller::scrollOptionsToTop() {
  for (ScrollView* pane : {&interface_.advancedOptionsScrollView, &interface_.advancedOptionsRSSScrollView}) {
    pane->scrollPoint({0, pane->documentSize().height});
  }
}

void Controller::observeNewMovies() {
  observations_.push_back(services_.notifications.observe(
      kMovieCreated, [this](const Notification& notification) { recordHandOff_.newMovie(notification); }));
}

void Controller::fetchChannels() {
  // Builds the store stack; where that fails the user has been told, and the lists stay empty.
  if (delegate_.managedObjectContext() == nullptr) return;
  interface_.channelController.fetch();
  interface_.imageController.fetch();
}

void Controller::addFirstChannel() {
  if (interface_.channelController.managedObjectContext() == nullptr) return;
  if (!interface_.channelController.arrangedObjects().empty()) return;
  addedNewChannel_ = true;
  interface_.channelController.add();
}

void Controller::observeValueForKeyPath(std::string_view keyPath) {
  if (keyPath == "selectedObjects") windowLayout_.updateWindowSize();
  if (addedNewChannel_) {
    interface_.mainWindow.makeFirstResponder(&interface_.channelTitleTextField);
    addedNewChannel_ = false;
  }
}

WindowController& Controller::aboutWindowController() {
  if (!aboutWindowController_) {
    aboutWindowController_ = std::make_unique<WindowController>("About");
    services_.interfaces.loadWindow(*aboutWindowController_);
  }
  return *aboutWindowController_;
}

void Controller::showAboutWindow() {
  aboutWindowController().window().makeKeyAndOrderFront();
}

std::shared_ptr<CopyBackEnd> Controller::makeBackEnd(int protocolTag) {
  if (protocolTag == kDotMacMethod) {
    return std::make_shared<CopyFiles>(DotMacCopyServices{
        services_.application, services_.runLoop, services_.defaults, services_.log, services_.dotMac});
  }
  return std::make_shared<CopyFilesLocally>(LocalCopyServices{
      services_.application, services_.runLoop, services_.files, services_.defaults, services_.log});
}

}  // namespace clipwave
