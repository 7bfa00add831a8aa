// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/qt/SymbolView.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "barcode/BarcodeOptions.h"
#include "barcode/BarcodeRtf.h"
#include "barcode/BarcodeTexts.h"
#include "barcode/ModuleSize.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ScreenReaderRoles.h"
#include "windows/qt/QtColour.h"

namespace {

// The last is what the toolkit calls the clipboard format of word processors on Windows, which
// look for no other; elsewhere it is one more name that nobody asks for.
constexpr const char* kRtfTypes[] = {"text/rtf", "application/rtf",
                                     R"(application/x-qt-windows-mime;value="Rich Text Format")"};

}  // namespace

SymbolView::SymbolView(QWidget* parent) : QAbstractScrollArea(parent), points_(kUsualFontSize) {
  setScreenReaderRole(*this, QAccessible::Graphic);
  setFontFamily(barcodeOptions().front().font);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  afterPainting_.setSingleShot(true);
  connect(&afterPainting_, &QTimer::timeout, this, &SymbolView::updateScrollBars);
}

void SymbolView::setText(const Text& text) {
  if (text == text_) return;
  text_ = text;
  symbolChanged();
}

void SymbolView::setFontFamily(TextView family) {
  if (font_ && font_->family() == family) return;
  symbol_.reset();
  font_ = std::make_unique<BarFont>(family);
  symbolChanged();
}

void SymbolView::setFontSize(std::int16_t points) {
  points_ = points;
  updateScrollBars();
}

void SymbolView::symbolChanged() {
  symbol_ = std::make_unique<SymbolPainter>(*font_, text_);
  anchor_ = end_ = 0;
  updateScrollBars();
}

// --- Selecting ----------------------------------------------------------------------------------

Text SymbolView::selectedText() const {
  const auto [begin, end] = std::minmax(anchor_, end_);
  return text_.substr(begin, end - begin);
}

void SymbolView::selectAll() { select(0, text_.size()); }

void SymbolView::select(std::size_t anchor, std::size_t end) {
  anchor_ = anchor;
  end_ = end;
  viewport()->update();
}

void SymbolView::copy() const {
  const Text selected = selectedText();
  if (selected.empty()) return;
  auto copied = std::make_unique<QMimeData>();
  copied->setText(toQt(selected));
  const QByteArray rtf = QByteArray::fromStdString(copiedRtf(selected, font_->family(), points_));
  for (const char* const type : kRtfTypes) copied->setData(QString::fromLatin1(type), rtf);
  QGuiApplication::clipboard()->setMimeData(copied.release());
}

void SymbolView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const std::size_t position = positionAt(event->position());
  select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : position, position);
}

void SymbolView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) select(anchor_, positionAt(event->position()));
}

void SymbolView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::SelectAll)) return selectAll();
  if (event->matches(QKeySequence::Copy)) return copy();
  if (!extendSelection(*event)) QAbstractScrollArea::keyPressEvent(event);
}

bool SymbolView::extendSelection(const QKeyEvent& event) {
  if (event.matches(QKeySequence::SelectNextChar)) {
    select(anchor_, std::min(end_ + 1, text_.size()));
  } else if (event.matches(QKeySequence::SelectPreviousChar)) {
    select(anchor_, end_ == 0 ? 0 : end_ - 1);
  } else if (event.matches(QKeySequence::SelectEndOfLine)) {
    select(anchor_, text_.size());
  } else if (event.matches(QKeySequence::SelectStartOfLine)) {
    select(anchor_, 0);
  } else {
    return false;
  }
  return true;
}

void SymbolView::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  QAction* copying = menu.addAction(QStringLiteral("Copier"), this, [this] { copy(); });
  copying->setEnabled(anchor_ != end_);
  QAction* selecting =
      menu.addAction(QStringLiteral("Tout sélectionner"), this, [this] { selectAll(); });
  selecting->setEnabled(!text_.empty());
  menu.exec(event->globalPos());
}

// --- Showing ------------------------------------------------------------------------------------

int SymbolView::module(double scale) const {
  constexpr int kMostDots = 1'000'000'000;  // wider than that is no int any more
  return std::max(1, moduleThatFits(moduleWidth(points_, logicalDpiX() * scale),
                                    symbol_->size().width(), kMostDots));
}

// A symbol that has room lies in the middle, a larger one where it was scrolled to.
QPoint SymbolView::corner(double scale) const {
  const QSize size = symbol_->size() * module(scale);
  const QSize room = viewport()->size() * scale;
  const auto begin = [scale](int free, const QScrollBar& bar) {
    return free >= 0 ? free / 2 : -static_cast<int>(std::lround(bar.value() * scale));
  };
  return {begin(room.width() - size.width(), *horizontalScrollBar()),
          begin(room.height() - size.height(), *verticalScrollBar())};
}

std::size_t SymbolView::positionAt(QPointF place) const {
  const double scale = viewport()->devicePixelRatioF();
  return symbol_->positionAt((place.x() * scale - corner(scale).x()) / module(scale));
}

void SymbolView::updateScrollBars() {
  const double scale = viewport()->devicePixelRatioF();
  scaleOfScrollBars_ = scale;
  const QSize size = symbol_->isEmpty() ? QSize() : symbol_->size() * module(scale);
  const auto setUp = [scale](QScrollBar& bar, int dots, int room) {
    constexpr int kStep = 20;
    bar.setRange(0, std::max(0, static_cast<int>(std::ceil(dots / scale)) - room));
    bar.setPageStep(room);
    bar.setSingleStep(kStep);
  };
  setUp(*horizontalScrollBar(), size.width(), viewport()->width());
  setUp(*verticalScrollBar(), size.height(), viewport()->height());
  viewport()->update();
}

void SymbolView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateScrollBars();
}

void SymbolView::paintEvent(QPaintEvent*) {
  // A window that moved to another screen is painted anew, but not always resized. A scroll bar
  // that comes or goes resizes the viewport: not while that is painted.
  if (viewport()->devicePixelRatioF() != scaleOfScrollBars_) {
    afterPainting_.start();
  }
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), Qt::white);  // also on a dark desktop: bars need it
  if (font_->isThere()) return paintSymbol(painter);
  constexpr int kMargin = 8;
  painter.setPen(Qt::black);
  painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignCenter | Qt::TextWordWrap,
                   toQt(failures::missingFont(font_->family()).description));
}

void SymbolView::paintSymbol(QPainter& painter) const {
  const DotCoordinates dots(painter);
  const int dotsOfModule = module(dots.scale());
  const QPoint place = corner(dots.scale());
  const auto [begin, end] = std::minmax(anchor_, end_);
  if (begin < end && !symbol_->isEmpty()) {
    const int left = symbol_->left(begin) * dotsOfModule;
    const int width = symbol_->left(end) * dotsOfModule - left;
    constexpr int kPale = 170;
    painter.fillRect(
        QRect(place + QPoint(left, 0), QSize(width, symbol_->size().height() * dotsOfModule)),
        toQt(standingOut(fromQt(palette().color(QPalette::Highlight).lighter(kPale)),
                         fromQt(QColor(Qt::black)), kTextContrast)));
  }
  symbol_->paint(painter, place, dotsOfModule, QRect(QPoint(), viewport()->size() * dots.scale()));
}
