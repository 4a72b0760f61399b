#include "desktop/LibraryTables.h"

#include <QCoreApplication>

#include "desktop/ListText.h"

namespace clipwave {
namespace {

using Kind = Column::Kind;

QString tr(const char* text) {
  return QCoreApplication::translate("LibraryTables", text);
}

Column publishColumn() {
  return {.kind = Kind::CheckBox,
          .key = "vcPublish",
          .title = tr("Publish"),
          .symbol = QStringLiteral("in-feed"),
          .actionName = tr("Change of Publish")};
}

}  // namespace

std::vector<Column> episodeColumns() {
  const QLocale locale;
  // A wide day: two digits and a month with a broad name.
  const QString day = dayText(Date::fromSeconds(1'795'305'600), locale);
  return {publishColumn(),
          {.kind = Kind::CheckBox,
           .key = "vcCopy",
           .title = tr("Copy when publishing"),
           .symbol = QStringLiteral("copy-movie"),
           .actionName = tr("Change of Copy")},
          {.kind = Kind::Title, .key = "vcTitle", .title = tr("Title")},
          {.kind = Kind::Day, .key = "vcPublishDate", .title = tr("Date"), .sample = day},
          {.kind = Kind::Duration,
           .key = "mediaTimeString",
           .title = tr("Time"),
           .sortsStored = true,
           .sample = "0:00:00"},
          {.kind = Kind::FileSize,
           .key = "size",
           .title = tr("Size"),
           .sortsStored = true,
           .sample = shortSizeText(1000LL << 20, locale)},
          {.kind = Kind::Trouble, .key = "vcPath", .title = tr("Trouble with the movie"), .sortable = false}};
}

std::vector<Column> channelColumns() {
  return {
      publishColumn(),
      {.kind = Kind::Title, .key = "vcTitle", .title = tr("Channels")},
      {.kind = Kind::Count, .key = "children", .title = tr("Episodes"), .sortable = false, .sample = "0000"}};
}

std::vector<Column> imageColumns() {
  return {{.kind = Kind::Title, .key = "title", .title = tr("Title")},
          {.kind = Kind::Text, .key = "url", .title = tr("URL")}};
}

QString emptyEpisodeListText(const ArrayController& channels) {
  if (channels.selectionIndexes().empty())
    return tr("No channel is selected.\nDrop movies here to begin a new one.");
  if (channels.selectionIndexes().size() > 1)
    return tr("Several channels are selected.\nChoose one of them to see its episodes.");
  return tr("No episodes yet.\nDrop movies here, or press Record");
}

Observation followEmptyText(RecordTable& episodes, ArrayController& channels) {
  const auto show = [&] { episodes.setEmptyText(emptyEpisodeListText(channels)); };
  show();
  return channels.observeSelectedObjects(show);
}

}  // namespace clipwave
