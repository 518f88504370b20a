#include "tools/alignment_residuals.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "align/fine_land.h"
#include "align/fine_windows.h"
#include "align/plane.h"
#include "lines/map_lines.h"

namespace pelorin::tools {
namespace {

/// As the search does it, that the same coasts are seen.
constexpr double kPictureBlur = 0.8, kLandBlur = 1, kLeastSd = 3;
constexpr int kContrastHalf = 32;
constexpr int kReach = 7;

/// A place fits well with so many votes; of those round it, farther off than kNear, none has more than this
/// share of them. A straight coast has many alike along it.
constexpr double kLeastVotes = 0.2, kNear = 3, kRivalShare = 0.6;

struct Best {
  double Rows = 0, Columns = 0, Votes = 0;
};

/// The highest place of a window's votes, to a fiftieth of a sample.
Best BestOf(const align::FineWindow& window) {
  Best best;
  const auto& votes = window.Whole();
  for (int y = 0; y < votes.Rows; ++y) {
    for (int x = 0; x < votes.Columns; ++x) {
      const double value{votes.Row(y)[x]};
      if (value > best.Votes) best = {y - kReach * 1.0, x - kReach * 1.0, value};
    }
  }
  constexpr double finest = 0.02;
  for (double step = 0.5; step >= finest; step /= 2) {
    for (bool goesOn = true; goesOn;) {
      goesOn = false;
      const Best from = best;
      for (const auto& [y, x] : {std::pair{-step, 0.0}, {step, 0.0}, {0.0, -step}, {0.0, step}}) {
        const double value = window.Votes(from.Rows + y, from.Columns + x);
        if (value > best.Votes) {
          best = {from.Rows + y, from.Columns + x, value};
          goesOn = true;
        }
      }
    }
  }
  return best;
}

bool StandsAlone(const align::FineWindow& window, const Best& best) {
  if (best.Votes < kLeastVotes || std::fabs(best.Rows) > kReach - 1 || std::fabs(best.Columns) > kReach - 1) {
    return false;
  }
  const auto& votes = window.Whole();
  for (int y = 0; y < votes.Rows; ++y) {
    for (int x = 0; x < votes.Columns; ++x) {
      const bool isNear = std::hypot(y - kReach - best.Rows, x - kReach - best.Columns) <= kNear;
      if (!isNear && double{votes.Row(y)[x]} > kRivalShare * best.Votes) return false;
    }
  }
  return true;
}

align::GreyPlane SeenOf(const align::Frame& frame) {
  align::GreyPlane seen(frame.Columns, frame.Rows);
  for (int row = 0; row < frame.Rows; ++row) {
    if (!std::isfinite(frame.Recording.SecondsOfLine(row))) continue;
    for (int x = 0; x < frame.Columns; ++x) {
      const double column = frame.ScannerColumn(x);
      seen.Row(row)[x] = column > -0.5 && column < frame.Recording.SeenBy.Line.Columns - 0.5;
    }
  }
  return seen;
}

QColor ColourOf(double misfit) {
  if (misfit <= 0.5) return {0, 130, 60};
  return misfit <= 1 ? QColor(220, 130, 0) : QColor(200, 0, 0);
}

}  // namespace

std::vector<CoastResidual> ResidualsOf(const swath::Recording& recording, const std::vector<QImage>& channels,
                                       const align::Ground& ground) {
  const align::Frame frame = align::Frame::OfPixels(recording);
  const align::GreyPlane seen = SeenOf(frame);
  std::vector<align::Plane> contrasts;
  for (const QImage& channel : channels) {
    const align::GreyPlane grey = align::MedianOfNine(align::ReceivedGrey(channel, recording));
    align::Plane plane(grey.Columns, grey.Rows);
    std::copy(grey.Values.begin(), grey.Values.end(), plane.Values.begin());
    contrasts.push_back(
        align::LocalContrast(align::Blurred(plane, kPictureBlur), seen, kContrastHalf, kLeastSd));
  }
  const align::Plane land =
      align::Blurred(align::LandIn(frame, kReach, *ground.Shores, ground.SurfacesOf), kLandBlur);
  align::WindowLayout layout;
  layout.RowReach = layout.ColumnReach = kReach;
  layout.Most = 2000;
  layout.MostVote = 4;
  std::vector<CoastResidual> residuals;
  for (const align::FineWindow& window :
       align::WindowsWithCoasts(contrasts, seen, land, kReach, layout, {}, [] {})) {
    const Best best = BestOf(window);
    if (!StandsAlone(window, best)) continue;
    const bool runsLeft = recording.RunsLeft(), isTurned = recording.Lies.Turned;
    const swath::PixelPoint at = window.Middle();
    CoastResidual residual;
    residual.Middle = {runsLeft ? recording.Columns - 1 - at.Column : at.Column,
                       isTurned ? recording.Rows - 1 - at.Row : at.Row};
    residual.Position = frame.ScannerColumn(at.Column) - (recording.SeenBy.Line.Columns - 1) / 2.0;
    // The picture shows here what the map has farther on.
    residual.Columns = runsLeft ? best.Columns : -best.Columns;
    residual.Rows = isTurned ? best.Rows : -best.Rows;
    residual.Votes = best.Votes;
    residuals.push_back(residual);
  }
  return residuals;
}

std::array<FifthOfLine, kFifths> FifthsOf(const swath::Recording& recording,
                                          const std::vector<CoastResidual>& residuals) {
  std::array<std::vector<double>, kFifths> columns, rows;
  for (const CoastResidual& residual : residuals) {
    const auto fifth = static_cast<std::size_t>(
        std::clamp(residual.Middle.Column / recording.Columns * kFifths, 0.0, kFifths - 1.0));
    columns[fifth].push_back(residual.Columns);
    rows[fifth].push_back(residual.Rows);
  }
  std::array<FifthOfLine, kFifths> fifths;
  for (std::size_t i = 0; i < fifths.size(); ++i) {
    fifths[i] = {static_cast<int>(columns[i].size()), MedianOf(columns[i]), MedianOf(rows[i])};
  }
  return fifths;
}

QImage DrawResiduals(const swath::Recording& recording, const std::vector<CoastResidual>& residuals,
                     const lines::FineLines& shores, double times) {
  QImage image(recording.Columns, recording.Rows, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  lines::MapLinesRequest request;
  request.Borders = false;
  const lines::MapLines map = lines::MapLinesOf(recording, &shores, request);
  painter.setPen(QPen(QColor(150, 150, 150), 1));
  for (const auto* all : {&map.Coasts, &map.Lakes}) {
    for (const lines::PixelLine& line : *all) {
      QPolygonF points;
      for (const swath::PixelPoint& point : line) points << QPointF(point.Column + 0.5, point.Row + 0.5);
      painter.drawPolyline(points);
    }
  }
  for (const CoastResidual& residual : residuals) {
    const QPointF at(residual.Middle.Column + 0.5, residual.Middle.Row + 0.5);
    const QColor colour = ColourOf(std::max(std::fabs(residual.Columns), std::fabs(residual.Rows)));
    painter.setPen(QPen(colour, 2));
    painter.drawLine(at, at + times * QPointF(residual.Columns, residual.Rows));
    painter.setBrush(colour);
    painter.drawEllipse(at, 3, 3);
  }
  return image;
}

}  // namespace pelorin::tools
