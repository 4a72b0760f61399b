// Shows and plays the movie of the program's movie view, with controls below the picture.
#pragma once

#include <QWidget>
#include <memory>

#include "platform/appkit/MovieView.h"
#include "platform/foundation/RunLoop.h"
#include "platform/quicktime/MoviePlayer.h"

class QLabel;
class QToolButton;

namespace clipwave {

class PictureArea;
class ScrubSlider;

// "00:04", or "1:00:04" with hours; negative times count as 0.
QString playingTimeText(double seconds, bool withHours);

// What is played, and whether, is the view's state; the controls change that state, and its end changes it
// too. Position and loudness are the widget's own. A movie is opened, beside the main thread, when it has
// been there for a moment and the widget can be seen, or as soon as it is to be played.
class MoviePreview final : public QWidget {
  Q_OBJECT

 public:
  explicit MoviePreview(QWidget* parent = nullptr);
  ~MoviePreview() override;

  // Both must outlive the widget.
  void attach(MovieView& view, RunLoop& runLoop);
  // What is said while there is no movie; nothing is "No movie".
  void setMessage(const QString& message);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void buildControls();
  void mirror();
  void setMovie(std::shared_ptr<Movie> movie);
  void loadSoon();
  void load();
  void showMovieFacts();
  void showPicture(const PixelBuffer& buffer);
  void showError(const Error& error);
  void seek(int milliseconds);
  void applyPlaying();
  void applyFrameSize();
  void applyMuted();
  void showState();
  void showTime(double seconds);
  void showTimeText(double seconds);

  PictureArea* picture_;
  QToolButton* playButton_;
  ScrubSlider* slider_;
  QLabel* timeLabel_;
  QToolButton* muteButton_;
  MovieView* view_ = nullptr;
  RunLoop* runLoop_ = nullptr;
  Observation observation_;
  QString message_;
  std::shared_ptr<Movie> movie_;
  std::shared_ptr<Timer> loadTimer_;
  QSize frameSize_;
  std::unique_ptr<MoviePlayer> player_;
};

}  // namespace clipwave
