#include "desktop/MoviePreview.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "desktop/PictureArea.h"
#include "desktop/ScrubSlider.h"
#include "desktop/SymbolicIcon.h"

namespace clipwave {
namespace {

// Who walks through a list with the arrow keys opens only the movie that he stays at.
constexpr Seconds kLoadDelay{0.08};
constexpr int kStep = 1000;  // milliseconds
constexpr int kPageStep = 10'000;
constexpr double kLongestScale = 2e6;  // seconds that the slider can count in milliseconds
constexpr int kSpacing = 8;
constexpr int kIconSize = 20;

QToolButton* makeButton(QWidget* parent) {
  auto* button = new QToolButton(parent);
  button->setAutoRaise(true);
  button->setIconSize({kIconSize, kIconSize});
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

bool hasHours(double duration) {
  return duration >= 3600;
}

}  // namespace

QString playingTimeText(double seconds, bool withHours) {
  // A time that was computed may lie a hair below the whole second that it means.
  const auto whole = static_cast<qint64>(std::floor(std::max(seconds, 0.0) + 1e-3));
  const auto padded = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
  if (!withHours) return padded(whole / 60) + QLatin1Char(':') + padded(whole % 60);
  return QString::number(whole / 3600) + QLatin1Char(':') + padded(whole / 60 % 60) + QLatin1Char(':') +
         padded(whole % 60);
}

MoviePreview::MoviePreview(QWidget* parent)
    : QWidget(parent),
      picture_(new PictureArea(this)),
      playButton_(makeButton(this)),
      slider_(new ScrubSlider(this)),
      timeLabel_(new QLabel(this)),
      muteButton_(makeButton(this)) {
  auto* controls = new QHBoxLayout;
  controls->setSpacing(kSpacing);
  controls->addWidget(playButton_);
  controls->addWidget(slider_, 1);
  controls->addWidget(timeLabel_);
  controls->addWidget(muteButton_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(kSpacing);
  layout->addWidget(picture_, 1);
  layout->addLayout(controls);
  setFocusProxy(picture_);
  picture_->setAccessibleName(tr("Movie picture"));
  connect(picture_, &PictureArea::resized, this, &MoviePreview::applyFrameSize);
  buildControls();
  setMovie(nullptr);
}

MoviePreview::~MoviePreview() {
  if (loadTimer_) loadTimer_->invalidate();
}

void MoviePreview::buildControls() {
  connect(playButton_, &QToolButton::clicked, this, [this] {
    if (view_) view_->isPlaying() ? view_->pause() : view_->play();
  });
  slider_->setAccessibleName(tr("Position in the movie"));
  slider_->setSingleStep(kStep);
  slider_->setPageStep(kPageStep);
  slider_->setMinimumWidth(48);
  connect(slider_, &QSlider::valueChanged, this, &MoviePreview::seek);
  // Held, the slider shows pictures only; what was playing goes on from where it is let go.
  connect(slider_, &QSlider::sliderPressed, this, &MoviePreview::applyPlaying);
  connect(slider_, &QSlider::sliderReleased, this, &MoviePreview::applyPlaying);
  timeLabel_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  muteButton_->setCheckable(true);
  muteButton_->setAccessibleName(tr("Mute"));
  connect(muteButton_, &QToolButton::toggled, this, &MoviePreview::applyMuted);
  applyMuted();
}

void MoviePreview::attach(MovieView& view, RunLoop& runLoop) {
  view_ = &view;
  runLoop_ = &runLoop;
  observation_ = view.observe([this] { mirror(); });
  mirror();
}

void MoviePreview::setMessage(const QString& message) {
  message_ = message;
  if (!movie_) picture_->setMessage(message_.isEmpty() ? tr("No movie") : message_);
}

void MoviePreview::mirror() {
  if (view_->movie() != movie_) setMovie(view_->movie());
  if (view_->isPlaying() && !movie_) {
    view_->pause();
    return;
  }
  if (view_->isPlaying() && !player_) load();
  applyPlaying();
  showState();
}

void MoviePreview::setMovie(std::shared_ptr<Movie> movie) {
  player_.reset();
  if (loadTimer_) loadTimer_->invalidate();
  loadTimer_.reset();
  movie_ = std::move(movie);
  picture_->setPicture({});
  picture_->setShowsSound(false);
  picture_->setNotice({});
  picture_->setMessage({});
  setMessage(message_);
  showMovieFacts();
  if (movie_ && isVisible()) loadSoon();
}

void MoviePreview::loadSoon() {
  if (loadTimer_) loadTimer_->invalidate();
  loadTimer_ = runLoop_->scheduleTimer(kLoadDelay, [this] {
    if (!player_) load();
  });
}

void MoviePreview::load() {
  if (loadTimer_) loadTimer_->invalidate();
  player_ = makeMoviePlayer(movie_->path(), *runLoop_);
  player_->setOnOpened([this] { showMovieFacts(); });
  player_->setOnFrame([this](const PixelBuffer& buffer) { showPicture(buffer); });
  player_->setOnTime([this](double seconds) { showTime(seconds); });
  player_->setOnEnd([this] { view_->pause(); });
  player_->setOnError([this](const Error& error) { showError(error); });
  frameSize_ = {};
  applyFrameSize();
  applyMuted();
}

// The slider, the time and what can be pressed.
void MoviePreview::showMovieFacts() {
  const bool isOpen = player_ && player_->isOpen();
  const double duration = isOpen ? player_->duration() : 0;
  {
    const QSignalBlocker blocker(slider_);
    slider_->setRange(0, static_cast<int>(std::lround(std::min(duration, kLongestScale) * 1000)));
    slider_->setValue(0);
  }
  slider_->setEnabled(duration > 0);
  timeLabel_->setEnabled(isOpen);
  if (isOpen && !player_->hasVideo()) {
    picture_->setShowsSound(true);
    picture_->setMessage(tr("Sound only"));
  }
  showTimeText(isOpen ? player_->time() : 0);
  showState();
}

void MoviePreview::showPicture(const PixelBuffer& buffer) {
  picture_->setPicture(QImage(buffer.bytes.data(), buffer.width, buffer.height,
                              static_cast<qsizetype>(buffer.bytesPerRow), QImage::Format_RGB32)
                           .copy());
  applyFrameSize();
}

void MoviePreview::showError(const Error& error) {
  if (player_->isOpen()) {
    picture_->setNotice(tr("The movie is damaged and breaks off here."));
  } else {
    player_.reset();
    picture_->setMessage(error.code == kFileReadNoSuchFileError ? tr("Movie file is missing")
                                                                : tr("This movie cannot be played"));
    showMovieFacts();
  }
  view_->pause();
}

void MoviePreview::seek(int milliseconds) {
  if (!player_) return;
  picture_->setNotice({});
  player_->setTime(milliseconds / 1000.0);
  showTimeText(milliseconds / 1000.0);
}

void MoviePreview::applyPlaying() {
  if (!player_) return;
  if (view_->isPlaying() && !slider_->isSliderDown()) {
    picture_->setNotice({});
    player_->play();
  } else {
    player_->pause();
  }
}

void MoviePreview::applyFrameSize() {
  const QSize size = picture_->pixelSize();
  if (!player_ || size == frameSize_) return;
  frameSize_ = size;
  player_->setFrameSize(size.width(), size.height());
}

void MoviePreview::applyMuted() {
  const bool isMuted = muteButton_->isChecked();
  muteButton_->setIcon(imageNamed(isMuted ? QStringLiteral("sound-off") : QStringLiteral("sound")));
  muteButton_->setToolTip(isMuted ? tr("Turn the sound on") : tr("Turn the sound off"));
  if (player_) player_->setVolume(isMuted ? 0 : 1);
}

void MoviePreview::showState() {
  const bool isPlaying = view_ && view_->isPlaying();
  playButton_->setIcon(imageNamed(isPlaying ? QStringLiteral("pause") : QStringLiteral("play")));
  playButton_->setAccessibleName(isPlaying ? tr("Pause") : tr("Play"));
  playButton_->setToolTip(isPlaying ? tr("Pause (Space)") : tr("Play (Space)"));
  const bool isOpen = player_ && player_->isOpen();
  playButton_->setEnabled(isOpen || isPlaying);
  muteButton_->setEnabled(isOpen && player_->hasSound());
}

void MoviePreview::showTime(double seconds) {
  if (slider_->isSliderDown()) return;
  const QSignalBlocker blocker(slider_);
  slider_->setValue(static_cast<int>(std::lround(std::min(seconds, kLongestScale) * 1000)));
  showTimeText(seconds);
}

void MoviePreview::showTimeText(double seconds) {
  const double duration = player_ ? player_->duration() : 0;
  const bool withHours = hasHours(std::max(duration, seconds));
  const QString total = playingTimeText(duration, withHours);
  timeLabel_->setText(tr("%1 / %2").arg(playingTimeText(seconds, withHours), total));
  // The text keeps its width while the digits change.
  QString widest = timeLabel_->text();
  for (QChar& letter : widest)
    if (letter.isDigit()) letter = QLatin1Char('8');
  timeLabel_->setMinimumWidth(timeLabel_->fontMetrics().horizontalAdvance(widest));
  slider_->setAccessibleDescription(timeLabel_->text());
}

// Keys that reach the widget come from its picture, or were of no use to a control.
void MoviePreview::keyPressEvent(QKeyEvent* event) {
  using Action = QAbstractSlider::SliderAction;
  const std::pair<int, Action> moves[] = {
      {Qt::Key_Left, Action::SliderSingleStepSub},   {Qt::Key_Right, Action::SliderSingleStepAdd},
      {Qt::Key_PageDown, Action::SliderPageStepSub}, {Qt::Key_PageUp, Action::SliderPageStepAdd},
      {Qt::Key_Home, Action::SliderToMinimum},       {Qt::Key_End, Action::SliderToMaximum}};
  const auto move = std::ranges::find(moves, event->key(), &std::pair<int, Action>::first);
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat() && playButton_->isEnabled())
    playButton_->click();
  else if (move != std::end(moves) && slider_->isEnabled())
    slider_->triggerAction(move->second);
  else
    QWidget::keyPressEvent(event);
}

void MoviePreview::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (movie_ && !player_ && runLoop_) loadSoon();
}

void MoviePreview::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) showTimeText(slider_->value() / 1000.0);
}

}  // namespace clipwave
