// Hands the preview the movie of the selected episode, and says why there is none.
#pragma once

#include <QObject>

#include "platform/appkit/MovieView.h"
#include "platform/appkit/SelectedValue.h"

namespace clipwave {

class MoviePreview;

class PreviewMirror final : public QObject {
  Q_OBJECT

 public:
  // Lives with the widget; the rest must outlive it.
  PreviewMirror(MoviePreview& widget, MovieView& view, ArrayController& episodes);

 private:
  void refresh();
  QString message() const;

  MoviePreview& widget_;
  MovieView& view_;
  ArrayController& episodes_;
  SelectedValue movie_;
};

}  // namespace clipwave
