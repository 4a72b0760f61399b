#include "desktop/PreviewMirror.h"

#include "desktop/MoviePreview.h"

namespace clipwave {

PreviewMirror::PreviewMirror(MoviePreview& widget, MovieView& view, ArrayController& episodes)
    : QObject(&widget), widget_(widget), view_(view), episodes_(episodes), movie_(episodes, "movie", [this] {
        refresh();
      }) {
  refresh();
}

void PreviewMirror::refresh() {
  // Several episodes share no movie, and none of them is opened to find that out.
  const bool isSingle = episodes_.selectionIndexes().size() == 1;
  auto movie = isSingle ? std::dynamic_pointer_cast<Movie>(movie_.value().handleValue()) : nullptr;
  widget_.setMessage(movie ? QString() : message());
  view_.setMovie(std::move(movie));
}

QString PreviewMirror::message() const {
  const auto selected = episodes_.selectionIndexes().size();
  if (selected == 0) return tr("No episode selected");
  if (selected > 1) return tr("%n episodes selected", nullptr, static_cast<int>(selected));
  ManagedObject* episode = episodes_.arrangedObjects()[*episodes_.selectionIndex()];
  if (!episode->primitiveValue("vcPath").isString())
    return episode->primitiveValue("mediaFilename").isString() ? tr("The movie is on the web")
                                                               : tr("No movie chosen yet");
  return episode->value("vcPath").stringValue().empty() ? tr("The movie file is missing")
                                                        : tr("The file is not a movie");
}

}  // namespace clipwave
