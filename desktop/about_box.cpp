#include "desktop/about_box.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QTabWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "app/program_paths.h"
#include "desktop/icon.h"
#include "session/controls.h"

namespace pelorin::desktop {
namespace {

using session::Named;

constexpr int kIconSide = 72;
constexpr int kNoticeColumns = 80, kRows = 32;
constexpr qint64 kLongestNotices = 1 << 20;

QString LibrariesHtml() {
  return QStringLiteral(
             "<p>Pelorin is free software under the MIT licence. It comes without any warranty.</p>"
             "<p>It is linked to these libraries, whose authors we thank:</p>"
             "<p><b>Qt %1</b><br>© The Qt Company Ltd. and other contributors. Used under the GNU Lesser "
             "General "
             "Public License, version 3; Qt is linked as shared libraries, which you may replace.<br>"
             "<a href=\"https://www.qt.io/\">https://www.qt.io/</a></p>"
             "<p><b>libjpeg-turbo</b><br>© D. R. Commander and others; this software is based in part on the "
             "work "
             "of the Independent JPEG Group. IJG licence, modified (3-clause) BSD licence and zlib "
             "licence.<br>"
             "<a href=\"https://libjpeg-turbo.org/\">https://libjpeg-turbo.org/</a></p>"
             "<p><b>libpng</b><br>© The PNG Reference Library Authors. PNG Reference Library License.<br>"
             "<a href=\"http://www.libpng.org/\">http://www.libpng.org/</a></p>"
             "<p><b>libtiff</b><br>© Sam Leffler, Silicon Graphics, Inc. and others. libtiff licence.<br>"
             "<a href=\"http://www.libtiff.org/\">http://www.libtiff.org/</a></p>"
             "<p><b>zlib</b>, beneath libpng<br>© Jean-loup Gailly and Mark Adler. zlib licence.<br>"
             "<a href=\"https://zlib.net/\">https://zlib.net/</a></p>"
             "<p><b>JSON for Modern C++</b><br>© Niels Lohmann and others. MIT licence.<br>"
             "<a href=\"https://json.nlohmann.me/\">https://json.nlohmann.me/</a></p>")
      .arg(QString::fromLatin1(qVersion()));
}

QString NoticesText() {
  const QString name = QStringLiteral("NOTICES");
  QFile file(app::FindDataFile(name));
  if (!file.fileName().isEmpty() && file.open(QIODevice::ReadOnly)) {
    return QString::fromUtf8(file.read(kLongestNotices));
  }
  return QStringLiteral(
      "The file NOTICES, which tells where the map data come from, was not found beside the program's data. "
      "Without the map data, the program draws neither boundaries nor topography of its own.");
}

QLabel* HeadingLabel(const QString& text, double scale, bool bold, const char* name, QWidget* parent) {
  auto* label = Named(new QLabel(text, parent), name);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * scale);
  font.setBold(bold);
  label->setFont(font);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

TAboutBoxQuillfen::TAboutBoxQuillfen(session::Session& session, QWidget* parent)
    : TForm(session, "AboutBoxQuillfen", QStringLiteral("About Pelorin"), parent) {}

void TAboutBoxQuillfen::FormCreate() {
  auto* mark = new QLabel(this);
  mark->setPixmap(IconPicture(kIconSide, devicePixelRatioF()));
  auto* product = HeadingLabel(QStringLiteral("Pelorin"), 1.9, true, "LabelProductName", this);
  auto* version = HeadingLabel(QStringLiteral("Version %1").arg(QStringLiteral(PELORIN_VERSION)), 1, false,
                               "LabelVersion", this);
  auto* purpose = HeadingLabel(
      QStringLiteral("Satellite tracker and ground image generator for weather-picture stations"), 1, false,
      "LabelPurpose", this);
  purpose->setWordWrap(true);

  auto* libraries = Named(new QTextBrowser(this), "TextLibraries");
  libraries->setOpenExternalLinks(true);
  libraries->setHtml(LibrariesHtml());
  auto* notices = Named(new QPlainTextEdit(NoticesText(), this), "TextNotices");
  notices->setReadOnly(true);
  notices->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* tabs = new QTabWidget(this);
  tabs->addTab(libraries, QStringLiteral("&Licences"));
  tabs->addTab(notices, QStringLiteral("Map &data"));

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* heading = new QGridLayout;
  heading->setHorizontalSpacing(16);
  heading->addWidget(mark, 0, 0, 3, 1);
  heading->addWidget(product, 0, 1);
  heading->addWidget(version, 1, 1);
  heading->addWidget(purpose, 2, 1);
  heading->setColumnStretch(1, 1);
  auto* rows = new QVBoxLayout(this);
  rows->setSpacing(12);
  rows->addLayout(heading);
  rows->addWidget(tabs, 1);
  rows->addWidget(buttons);
  buttonOK_ = Named(buttons->button(QDialogButtonBox::Ok), "ButtonOK");

  const int rims = 2 * (rows->contentsMargins().left() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  const int lineWidth = QFontMetrics(notices->font()).horizontalAdvance(u'M') * kNoticeColumns;
  resize(lineWidth + rims, fontMetrics().lineSpacing() * kRows);
}

}  // namespace pelorin::desktop
