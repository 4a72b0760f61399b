#include "desktop/pictures/InstructionPictures.h"

#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <filesystem>
#include <initializer_list>
#include <utility>

namespace clipwave {

namespace {

// Small enough for its texts to be read on paper.
constexpr QSize kWindow(1100, 800);
constexpr int kRows = 92;  // points: the head of a list, and three rows
constexpr int kPanelHeight = 340;
constexpr int kRecordingTime = 4000;                             // milliseconds
const char* const kFolder = "/Volumes/Studio/Podcasts/Cooking";  // on a volume that is not there

ManagedObject& selectedChannel(Photographer& camera) {
  return *camera.interface().channelController.selectedObjects().front();
}

std::string home(Photographer& camera) {
  return camera.desktop().program().services().process.homeDirectory();
}

void setDefault(Photographer& camera, const char* key, const Value& value) {
  static_cast<void>(camera.desktop().program().services().defaults.setValue(key, value));
}

// Only the fields, without the strip below them.
void takePages(Photographer& camera) {
  auto* tabs = camera.mainWindow().findChild<QTabWidget*>(QStringLiteral("lowerTabs"));
  const std::pair<const char*, const char*> pages[] = {{"page-episode", "actionShowEpisode"},
                                                       {"page-details", "actionShowEpisodeDetails"},
                                                       {"page-channel", "actionShowChannel"},
                                                       {"page-podcast", "actionShowPodcast"},
                                                       {"page-rss", "actionShowRSS"}};
  for (const auto& [name, action] : pages) {
    camera.mainWindow().findChild<QAction*>(QLatin1String(action))->trigger();
    camera.settle(300);
    camera.takeAlone(QLatin1String(name), *tabs);
  }
  camera.mainWindow().findChild<QAction*>(QStringLiteral("actionShowEpisode"))->trigger();
}

void takeSheets(Photographer& camera) {
  MainInterface& interface = camera.interface();
  camera.send("importRSSFromURL:");
  interface.rssURLBox.edit("https://example.org/garden/feed.xml");
  camera.takeAlone("import-url", interface.rssFeedWindow);
  camera.send("cancelRSSFeedSheet:");
  camera.send("editImageProps:");
  camera.settle();
  camera.takeAlone("artwork", interface.editImagePropsWindow);
  camera.send("closeEditImagePropsSheet:");
  camera.send("showAboutWindow:");
  camera.takeAlone("about", camera.desktop().program().controller().aboutWindowController().window());
  camera.send("closeAboutWindow:");
  const char* const pages[] = {"preferences-general", "preferences-account", "preferences-advanced"};
  for (int page = 0; page < 3; ++page)
    camera.takeDialog(
        QLatin1String(pages[page]), QStringLiteral("Done"), [&] { camera.send("showPrefs:"); },
        [&](QWidget& window) {
          window.findChild<QTabWidget*>(QStringLiteral("preferencesTabs"))->setCurrentIndex(page);
          camera.settle(200);
        });
}

void takeQuestions(Photographer& camera) {
  MainInterface& interface = camera.interface();
  camera.takeDialog("alert-trash", "Cancel", [&] { camera.send("removeEpisodes:"); });
  camera.takeDialog("alert-delete-channel", "Cancel", [&] { camera.send("removeChannels:"); });
  camera.takeDialog(
      "panel-movies", "Cancel", [&] { camera.send("addEpisodes:"); },
      [&](QWidget& panel) {
        auto* dialog = qobject_cast<QFileDialog*>(&panel);
        if (dialog == nullptr) return;
        dialog->setDirectory(QString::fromStdString(home(camera) + "/Movies/Raw"));
        dialog->resize(dialog->width(), kPanelHeight);
        camera.settle();
      });
  std::filesystem::create_directories(home(camera) + "/Movies/Clipwave/Garden");
  camera.takeDialog("alert-title", "OK", [&] {
    interface.channelTitleTextField.edit("Garden");
    interface.channelTitleTextField.commitEditing();
  });
  interface.channelTitleTextField.discardEditing();
}

void startPublishing(Photographer& camera) {
  camera.interface().publishButton.performClick();
}

void takePublishing(Photographer& camera) {
  MainInterface& interface = camera.interface();
  ManagedObject& channel = selectedChannel(camera);
  startPublishing(camera);
  camera.settleUntil([&] { return interface.statusWindow.isVisible(); });
  camera.takeAlone("report", interface.statusWindow);
  camera.send("closeStatusSheet:");
  camera.takeDialog("alert-file-exists", "Cancel", [&] { startPublishing(camera); });

  const Value folder = channel.value("mediaPath");
  channel.setValue("mediaPath", kFolder);
  camera.takeDialog("alert-volume", "OK", [&] { startPublishing(camera); });
  channel.setValue("mediaPath", folder);
}

// The account that the library was made with is of a disk that nobody has.
void takeOnlineDisk(Photographer& camera) {
  MainInterface& interface = camera.interface();
  selectedChannel(camera).setValue("vcPublish", false);
  camera.selectChannel(interface.channelController.arrangedObjects().size() - 1);
  camera.take("main-simple");
  selectedChannel(camera).setValue("vcPublish", true);
  camera.takeDialog("alert-dotmac", "OK", [&] { startPublishing(camera); });
  setDefault(camera, "dotMacMemberName", {});
  camera.takeDialog("alert-no-account", "Cancel", [&] { startPublishing(camera); });
  selectedChannel(camera).setValue("vcPublish", false);
  camera.selectChannel(0);
  selectedChannel(camera).setValue("vcPublish", true);
}

// With the pattern that needs no camera. It becomes an episode, so that it comes last.
void takeRecording(Photographer& camera) {
  for (const char* key : {"captureDevice", "captureSoundDevice"})
    setDefault(camera, key, std::string(kTestPatternDevice));
  camera.send("recordMovie:");
  RecordHandOff& handOff = camera.desktop().program().controller().recordHandOff();
  if (!handOff.isOpen()) return;
  RecordWindowController& sheet = handOff.recordWindowController();
  Recorder& recorder = sheet.recorder();
  camera.settle();
  sheet.filenameTextField().edit("A walk at the harbour");
  camera.takeAlone("record-ready", sheet.window());
  camera.takeDialog("record-video", "Cancel", [&] { recorder.showVideoSettings(); });
  camera.takeDialog("record-sound", "Cancel", [&] { recorder.showSoundSettings(); });
  camera.takeDialog("record-size", "Cancel", [&] { recorder.showSizePanel(); });
  QWidget* widget = camera.desktop().interface().widgetOf(sheet.window());
  if (QMenu* menu = widget->findChild<QPushButton*>(QStringLiteral("optionsButton"))->menu()) {
    menu->popup({});
    camera.settle(300);
    camera.takeAlone("record-options", *menu);
    menu->close();
  }
  recorder.record();
  camera.settle(kRecordingTime);
  camera.takeAlone("record-running", sheet.window());
  handOff.endRecording();
  camera.settle(300);
}

void drop(Photographer& camera, std::initializer_list<const char*> names) {
  DraggingInfo info;
  Array paths;
  for (const char* name : names) paths.emplace_back(home(camera) + "/Movies/Raw/" + name);
  info.draggingPasteboard.setPropertyList(std::move(paths), NSFilenamesPboardType);
  camera.desktop().program().controller().episodeListEditing().acceptDrop(camera.interface().vcastTableView,
                                                                          info, 0, TableDropOperation::Above);
  camera.settle();
}

// An episode whose movie was taken away.
void takeMissingMovie(Photographer& camera) {
  std::filesystem::remove(home(camera) + "/Movies/Raw/Knives.mp4");
  drop(camera, {"Knives.mp4"});
  QWidget* table = camera.mainWindow().findChild<QWidget*>(QStringLiteral("vcastTableView"));
  if (table != nullptr) camera.takeAlone("missing-movie", *table, kRows);
}

}  // namespace

void takeInstructionPictures(Photographer& camera) {
  camera.mainWindow().resize(kWindow);
  camera.settle(300);
  camera.take("main");
  takePages(camera);
  takeSheets(camera);
  takeQuestions(camera);
  takePublishing(camera);
  takeOnlineDisk(camera);
  takeRecording(camera);
}

void takeFirstPodcast(Photographer& camera) {
  MainInterface& interface = camera.interface();
  camera.mainWindow().resize(kWindow);
  camera.settle();
  camera.take("first-start");
  interface.channelTitleTextField.edit("Cooking");
  interface.channelTitleTextField.commitEditing();
  ManagedObject& channel = selectedChannel(camera);
  channel.setValue("vcSubtitle", "Bread, knives and soup");
  channel.setValue("mediaPath", home(camera) + "/Sites/cooking");
  channel.setValue("vcURL", "http://www.example.org/cooking");
  channel.setValue("websiteURL", "http://www.example.org/");
  drop(camera, {"Bread, part one.mov", "Bread, part two.mov"});
  camera.mainWindow().findChild<QAction*>(QStringLiteral("actionShowEpisode"))->trigger();
  camera.settle();
  camera.take("first-movies");
  startPublishing(camera);
  camera.settleUntil([&] { return interface.statusWindow.isVisible(); });
  camera.takeSheet("first-report", interface.statusWindow);
  camera.send("closeStatusSheet:");
  takeMissingMovie(camera);
}

}  // namespace clipwave
