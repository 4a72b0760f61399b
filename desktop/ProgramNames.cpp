#include "desktop/ProgramNames.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QScopeGuard>
#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include "desktop/EditActions.h"
#include "desktop/Text.h"
#include "model/Formatter.h"

namespace clipwave {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ProgramNames)
};

using Actions = std::map<std::string, InterfaceAction, std::less<>>;

std::function<bool()> hasSelection(ArrayController& list) {
  return [&list] { return !list.selectionIndexes().empty(); };
}

void addLibraryActions(Actions& actions, ClipwaveProgram& program, const DesktopActions& desktop) {
  Controller& controller = program.controller();
  lanternAppDelegate& delegate = program.delegate();
  actions["saveAction:"] = {[&controller, &delegate] {
    ManagedObjectContext* context = controller.channelController().managedObjectContext();
    if (context == nullptr || context->commitEditing()) delegate.saveAction();
  }};
  actions["terminate:"] = {desktop.quit};
  actions["showHelp:"] = {
      [&delegate] { delegate.showHelp(); },
      [&program] {
        return program.services().bundle.pathForResource("Clipwave Instructions", "pdf").has_value();
      }};
  actions["showAboutWindow:"] = {[&controller] { controller.showAboutWindow(); }};
  actions["closeAboutWindow:"] = {[&controller] { controller.aboutWindowController().window().orderOut(); }};
  actions["showPrefs:"] = {[&controller] { controller.episodeListEditing().showPrefs(); }};
  actions["dismissPrefs:"] = {[&controller] {
    Window& window = controller.interface().prefWindow;
    // An entry that is not acceptable keeps the window open.
    if (window.makeFirstResponder(nullptr)) controller.episodeListEditing().dismissPrefs();
  }};
}

void addListActions(Actions& actions, ClipwaveProgram& program) {
  Controller& controller = program.controller();
  ChannelListEditing& channels = controller.channelListEditing();
  EpisodeListEditing& episodes = controller.episodeListEditing();
  const auto hasStore = [&controller] {
    return controller.channelController().managedObjectContext() != nullptr;
  };
  const auto anyChannel = hasSelection(controller.channelController());
  const auto anyEpisode = hasSelection(controller.vodcastController());
  actions["addChannel:"] = {[&channels] { channels.addChannel(); }, hasStore};
  actions["removeChannels:"] = {[&channels] { channels.removeSelectedChannels(); }, anyChannel};
  actions["openMovies:"] = {[&channels] { channels.openMovies(); }, hasStore};
  actions["addEpisodes:"] = {[&channels] { channels.addEpisodes(); }, hasStore};
  actions["recordMovie:"] = {[&controller] { controller.recordHandOff().recordMovie(); }};
  actions["removeEpisodes:"] = {[&controller] {
                                  ArrayController& list = controller.vodcastController();
                                  list.removeObjectsAtArrangedObjectIndexes(list.selectionIndexes());
                                },
                                anyEpisode};
  actions["addMovie:"] = {[&episodes] { episodes.addMovie(); }, anyEpisode};
  actions["clearMovie:"] = {[&episodes] { episodes.clearMovie(); }, anyEpisode};
  actions["openMediaInQuicktime:"] = {[&episodes] { episodes.openMediaInQuicktime(); }, anyEpisode};
  actions["toggleSelectedOnCopyVodcasts:"] = {[&episodes] { episodes.toggleSelectedOnCopyVodcasts(); },
                                              anyEpisode};
  actions["toggleSelectedOnPublishVodcasts:"] = {[&episodes] { episodes.toggleSelectedOnPublishVodcasts(); },
                                                 anyEpisode};
  actions["toggleSelectedOnPublishChannel:"] = {[&episodes] { episodes.toggleSelectedOnPublishChannel(); },
                                                anyChannel};
  actions["playOrPause:"] = {[&controller] {
                               MovieView& preview = controller.interface().previewPane;
                               preview.isPlaying() ? preview.pause() : preview.play();
                             },
                             [&controller] { return controller.interface().previewPane.movie() != nullptr; }};
}

void addImageActions(Actions& actions, ClipwaveProgram& program) {
  Controller& controller = program.controller();
  EpisodeListEditing& episodes = controller.episodeListEditing();
  ArrayController& images = controller.imageController();
  actions["editImageProps:"] = {[&controller, &episodes, &images] {
                                  const Value image =
                                      controller.channelController().selection().value("image");
                                  if (image.recordValue() != nullptr)
                                    images.setSelectedObjects({image.recordValue()});
                                  episodes.editImageProps();
                                },
                                hasSelection(controller.channelController())};
  actions["closeEditImagePropsSheet:"] = {[&episodes, &images] {
    if (images.commitEditing()) episodes.closeEditImagePropsSheet();
  }};
  actions["revertImageChanges:"] = {[&episodes] { episodes.revertImageChanges(); }, {}, true};
  actions["addImage:"] = {[&images] {
    images.add();
    images.setUndoActionName(toText(Texts::tr("New Artwork")));
  }};
  actions["removeImage:"] = {[&images] {
                               images.removeObjectsAtArrangedObjectIndexes(images.selectionIndexes());
                               images.setUndoActionName(toText(Texts::tr("Delete Artwork")));
                             },
                             hasSelection(images)};
}

void addPublishActions(Actions& actions, ClipwaveProgram& program, const DesktopActions& desktop) {
  Controller& controller = program.controller();
  FeedImport& import = controller.feedImport();
  PublishRun& run = controller.publishRun();
  SubscriptionHandOff& handOff = controller.subscriptionHandOff();
  // What waits for a server shows that it does.
  const auto waiting = [](const std::function<void()>& work) {
    return [work] {
      QApplication::setOverrideCursor(Qt::WaitCursor);
      const auto restore = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
      work();
    };
  };
  actions["save:"] = {[&controller] { controller.interface().publishButton.performClick(); }};
  actions["closeStatusSheet:"] = {[&run] { run.closeStatusSheet(); }};
  actions["importRSSFromFile:"] = {[&import] { import.importRSSFromFile(); }};
  actions["importRSSFromURL:"] = {[&import] { import.importRSSFromURL(); }};
  actions["closeRSSFeedSheet:"] = {waiting([&import] { import.closeRSSFeedSheet(); })};
  actions["cancelRSSFeedSheet:"] = {[&import] { import.cancelRSSFeedSheet(); }};
  actions["openInItunes:"] = {[&handOff] { handOff.openInItunes(); },
                              [&controller] { return !controller.feedPreparation().urlsToLaunch().empty(); }};
  actions["copyLinks:"] = {[&controller, tell = desktop.tell] {
    QApplication::clipboard()->setText(toQString(controller.interface().statusTextView.string()).trimmed());
    tell(toText(Texts::tr("The links are on the clipboard.")));
  }};
  actions["sendEmail:"] = {
      [&handOff, &program, tell = desktop.tell] {
        handOff.sendEmail();
        const Value text = program.services().generalPasteboard.propertyListForType(NSStringPboardType);
        QApplication::clipboard()->setText(toQString(text.stringValue()));
        tell(toText(Texts::tr("The invitation is on the clipboard.")));
      },
      [&controller] { return !controller.channelController().arrangedObjects().empty(); }};
  actions["chooseDestination:"] = {
      [&controller] { controller.publishMethod().chooseDestination(); },
      [&controller] { return controller.channelController().selection().value("canEditURLs").boolValue(); }};
}

void addEditActions(Actions& actions, ClipwaveProgram& program) {
  // Asked while the windows are made, too: the library is opened afterwards, and once.
  const auto undoManager = [&program] {
    ManagedObjectContext* context = program.controller().channelController().managedObjectContext();
    return context != nullptr ? &context->undoManager() : nullptr;
  };
  // A method of publishing that comes back brings its layout along.
  WindowLayout& layout = program.controller().windowLayout();
  actions["undo:"] = {[undoManager, &layout] {
                        undoLastChange(undoManager());
                        layout.updateWindowSize();
                      },
                      [undoManager] { return canUndoChange(undoManager()); }};
  actions["redo:"] = {[undoManager, &layout] {
                        redoLastChange(undoManager());
                        layout.updateWindowSize();
                      },
                      [undoManager] { return canRedoChange(undoManager()); }};
  for (const char* name : {"cut", "copy", "paste", "selectAll"})
    actions[std::string(name) + ":"] = {[name] { sendToFocus(name); }};
}

// Whether the desktop opens subscription links with this program. What is chosen elsewhere meanwhile is seen
// when the window comes up.
SettingAccess subscriptionSetting(Workspace& workspace) {
  static constexpr std::array kSchemes = {"itpc", "pcast"};
  static constexpr const char* kEntry = "clipwave-subscribe.desktop";
  SettingAccess setting;
  const auto isChosen = [&workspace](const char* scheme) {
    return workspace.defaultApplicationForURLScheme(scheme) == kEntry;
  };
  setting.flag = [isChosen] { return std::ranges::all_of(kSchemes, isChosen); };
  setting.storeFlag = [&workspace, isChosen](bool flag) -> std::string {
    const auto choose = [&workspace](const char* scheme, bool on) {
      return on ? workspace.setDefaultApplicationForURLScheme(kEntry, scheme)
                : workspace.removeDefaultApplicationForURLScheme(kEntry, scheme);
    };
    std::vector<const char*> changing;
    std::ranges::copy_if(kSchemes, std::back_inserter(changing),
                         [&](const char* scheme) { return isChosen(scheme) != flag; });
    for (const char* scheme : kSchemes) {
      const auto done = choose(scheme, flag);
      if (done) continue;
      // The user decides on both: what was changed up to here, or halfway, goes back to what it was.
      for (const char* other : changing)
        if (isChosen(other) == flag) static_cast<void>(choose(other, !flag));
      return done.error().code == kFileNoSuchFileError
                 ? toText(Texts::tr("Clipwave has to be installed before links can open with it."))
                 : done.error().localizedDescription;
    }
    return {};
  };
  setting.observe = [](const std::function<void()>&) { return Observation(); };
  setting.comesAndGoes = true;
  return setting;
}

SettingAccess settingOf(Preferences& preferences, const std::string& keyPath) {
  const auto dot = keyPath.find('.');
  const std::string group = keyPath.substr(0, dot);
  if (dot == std::string::npos || (group != "defaults" && keyPath != "account.password")) return {};
  const std::string key = keyPath.substr(dot + 1);
  if (!preferences.has(key)) return {};
  SettingAccess setting;
  setting.text = [&preferences, key] { return preferences.text(key); };
  setting.store = [&preferences, key](std::string_view text) {
    return preferences.setText(key, text).value_or(std::string());
  };
  setting.flag = [&preferences, key] { return preferences.flag(key); };
  setting.storeFlag = [&preferences, key](bool flag) {
    return preferences.setFlag(key, flag).value_or(std::string());
  };
  setting.observe = [&preferences, key](std::function<void()> function) {
    return preferences.observe(key, std::move(function));
  };
  if (key == Preferences::kPassword)
    setting.hint = [&preferences] {
      return toText(preferences.hasPassword() ? Texts::tr("Kept; type here to replace it")
                                              : Texts::tr("None is kept"));
    };
  return setting;
}

std::vector<Choices::Choice> listOf(const std::vector<std::string>& texts) {
  std::vector<Choices::Choice> list;
  for (const std::string& text : texts) list.push_back({toQString(text), toQString(text)});
  return list;
}

// The devices there are now; the program chooses where the user has not.
Choices devicesOf(CaptureKit& kit, OSType mediaType, const QString& noChoice) {
  Choices choices;
  choices.offered = [&kit, mediaType, noChoice] {
    std::vector<Choices::Choice> list = {{noChoice, QString()}};
    for (const CaptureDevice& device : kit.devices(mediaType))
      list.push_back({toQString(device.name), toQString(device.identifier)});
    return list;
  };
  choices.comeAndGo = true;
  choices.missing = [](const QString& stored) { return Texts::tr("%1 (not connected)").arg(stored); };
  return choices;
}

void addChoices(InterfaceNames& names, ClipwaveProgram& program) {
  Controller& controller = program.controller();
  names.choices["languages"] = {[&controller] { return listOf(controller.languageDataSource().display()); }};
  names.choices["timezones"] = {[&program] { return listOf(program.delegate().timezones()); }};
  names.choices["sizeUnits"] = {[] { return listOf({"Bytes", "KB", "MB", "GB"}); }};
  CaptureKit& kit = program.services().captureKit;
  names.choices["cameras"] = devicesOf(kit, kVideoMediaType, Texts::tr("First camera found"));
  names.choices["microphones"] = devicesOf(kit, kAudioMediaType, Texts::tr("First microphone found"));
  const auto categories = [&program](bool isSubcategory) {
    std::vector<std::string> list;
    for (const auto& [name, subcategories] : program.services().bundle.dictionaryForResource("categories")) {
      if (!isSubcategory) list.push_back(name);
      if (!isSubcategory) continue;
      for (const Value& subcategory : subcategories.arrayValue())
        list.emplace_back(subcategory.stringValue());
    }
    return listOf(list);
  };
  names.choices["categories"] = {[categories] { return categories(false); }};
  names.choices["subcategories"] = {[categories] { return categories(true); }};
}

}  // namespace

InterfaceNames namesOfProgram(ClipwaveProgram& program, Preferences& preferences,
                              const DesktopActions& desktop) {
  InterfaceNames names;
  MainInterface& interface = program.interface();
  names.outlets = {{"rssURLBox", &interface.rssURLBox},
                   {"titleTextField", &interface.titleTextField},
                   {"channelTitleTextField", &interface.channelTitleTextField},
                   {"statusTextView", &interface.statusTextView},
                   {"advancedOptionsScrollView", &interface.advancedOptionsScrollView},
                   {"advancedOptionsRSSScrollView", &interface.advancedOptionsRSSScrollView},
                   {"copyStatusTextField", &interface.copyStatusTextField},
                   {"copyStatus", &interface.copyStatus},
                   {"publishButton", &interface.publishButton},
                   {"protocolPopUp", &interface.protocolPopUp}};
  addLibraryActions(names.actions, program, desktop);
  addListActions(names.actions, program);
  addImageActions(names.actions, program);
  addPublishActions(names.actions, program, desktop);
  addEditActions(names.actions, program);
  names.controllers = {{"channelController", &interface.channelController},
                       {"vodcastController", &interface.vodcastController},
                       {"imageController", &interface.imageController}};
  names.model = &program.delegate().managedObjectModel();
  names.setting = [&preferences, &program](const std::string& keyPath) {
    if (keyPath == "workspace.opensSubscriptions") return subscriptionSetting(program.services().workspace);
    return settingOf(preferences, keyPath);
  };
  addChoices(names, program);
  names.validators["httpURL"] = Formatter::isValidObject;
  names.presentError = [&program](const Error& error) { program.services().application.presentError(error); };
  return names;
}

}  // namespace clipwave
