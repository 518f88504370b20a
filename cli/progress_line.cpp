#include "cli/progress_line.h"

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace pelorin::cli {
namespace {

bool IsTerminal(FILE* stream) {
#ifdef Q_OS_WIN
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

void Write(const QString& text) { std::fputs(text.toUtf8().constData(), stderr); }

}  // namespace

ProgressLine::ProgressLine(QString what) : what_(std::move(what)), isSeen_(IsTerminal(stderr)) {}

ProgressLine::~ProgressLine() {
  if (percent_ < 0) return;
  // As long as the longest.
  Write(u'\r' + QString(what_.size() + 7, u' ') + u'\r');
}

void ProgressLine::Show(double share) {
  const int percent = static_cast<int>(100 * share);
  if (!isSeen_ || percent == percent_) return;
  percent_ = percent;
  Write(QStringLiteral("\r%1 %2 % ").arg(what_).arg(percent, 3));
}

int ProgressLine::Milliseconds() const {
  using namespace std::chrono;
  return static_cast<int>(duration_cast<milliseconds>(steady_clock::now() - begin_).count());
}

}  // namespace pelorin::cli
