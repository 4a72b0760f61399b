#include "desktop/PlainTextView.h"

#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <algorithm>
#include <cmath>
#include <memory>

namespace clipwave {
namespace {

constexpr int kShortestLine = 36;  // in average characters
constexpr int kLongestLine = 64;

}  // namespace

PlainTextView::PlainTextView(const QString& text, bool isBold, QWidget* parent) : QTextEdit(parent) {
  setReadOnly(true);
  setFrameShape(QFrame::NoFrame);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName(text);
  // On the dialogue's own ground, in its colour.
  viewport()->setAutoFillBackground(false);
  QPalette colours = palette();
  colours.setColor(QPalette::Text, colours.color(QPalette::WindowText));
  setPalette(colours);
  QFont wanted = font();
  wanted.setBold(isBold);
  setFont(wanted);
  document()->setDocumentMargin(0);
  setPlainText(text);

  // Measured in a document of its own: the view lays its own out to the width that it happens to have.
  const std::unique_ptr<QTextDocument> measured(document()->clone());
  measured->setTextWidth(-1);
  const QFontMetrics metrics(wanted);
  const QSize available = screen()->availableSize();
  const int longest = std::min(kLongestLine * metrics.averageCharWidth(), available.width() / 2);
  const int shortest = std::min(kShortestLine * metrics.averageCharWidth(), longest);
  const int natural = static_cast<int>(std::ceil(measured->idealWidth())) + 1;
  const int width = std::clamp(natural, shortest, longest);
  measured->setTextWidth(width);
  const int height = static_cast<int>(std::ceil(measured->size().height()));
  const int line = metrics.lineSpacing();
  const int tallest = available.height() / (isBold ? 4 : 2) / line * line;
  const bool scrolls = height > tallest;
  setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
  setFixedSize(width + (scrolls ? verticalScrollBar()->sizeHint().width() : 0), std::min(height, tallest));
}

}  // namespace clipwave
