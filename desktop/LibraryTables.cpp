#include "desktop/LibraryTables.h"

#include <QCoreApplication>

#include "desktop/ListText.h"

namespace clipwave {
namespace {

using Kind = Column::Kind;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(LibraryTables)
};

Column publishColumn() {
  return {.kind = Kind::CheckBox,
          .key = "vcPublish",
          .title = Texts::tr("Publish"),
          .symbol = QStringLiteral("in-feed"),
          .actionName = Texts::tr("Change of Publish")};
}

}  // namespace

std::vector<Column> episodeColumns() {
  const QLocale locale;
  // A wide day: two digits and a month with a broad name.
  const QString day = dayText(Date::fromSeconds(1'795'305'600), locale);
  return {publishColumn(),
          {.kind = Kind::CheckBox,
           .key = "vcCopy",
           .title = Texts::tr("Copy when publishing"),
           .symbol = QStringLiteral("copy-movie"),
           .actionName = Texts::tr("Change of Copy")},
          {.kind = Kind::Title, .key = "vcTitle", .title = Texts::tr("Title")},
          {.kind = Kind::Day, .key = "vcPublishDate", .title = Texts::tr("Date"), .sample = day},
          {.kind = Kind::Duration,
           .key = "mediaTimeString",
           .title = Texts::tr("Time"),
           .sortsStored = true,
           .sample = "0:00:00"},
          {.kind = Kind::FileSize,
           .key = "size",
           .title = Texts::tr("Size"),
           .sortsStored = true,
           .sample = shortSizeText(1000LL << 20, locale)},
          {.kind = Kind::Trouble,
           .key = "vcPath",
           .title = Texts::tr("Trouble with the movie"),
           .sortable = false}};
}

std::vector<Column> channelColumns() {
  return {publishColumn(),
          {.kind = Kind::Title, .key = "vcTitle", .title = Texts::tr("Channels")},
          {.kind = Kind::Count,
           .key = "children",
           .title = Texts::tr("Episodes"),
           .sortable = false,
           .sample = "0000"}};
}

std::vector<Column> imageColumns() {
  return {{.kind = Kind::Title, .key = "title", .title = Texts::tr("Title")},
          {.kind = Kind::Text, .key = "url", .title = Texts::tr("URL")}};
}

QString emptyEpisodeListText(const ArrayController& channels) {
  if (channels.selectionIndexes().empty())
    return Texts::tr("No channel is selected.\nDrop movies here to begin a new one.");
  if (channels.selectionIndexes().size() > 1)
    return Texts::tr("Several channels are selected.\nChoose one of them to see its episodes.");
  return Texts::tr("No episodes yet.\nDrop movies here, or press “Record”.");
}

Observation followEmptyText(RecordTable& episodes, ArrayController& channels) {
  const auto show = [&] { episodes.setEmptyText(emptyEpisodeListText(channels)); };
  show();
  return channels.observeSelectedObjects(show);
}

}  // namespace clipwave
