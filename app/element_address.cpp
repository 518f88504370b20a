#include "app/element_address.h"

namespace pelorin::app {

QString PublicElementAddress() { return QStringLiteral("https://celestrak.org/NORAD/elements/"); }

bool IsPublicService(const QString& address) {
  const auto host = [](const QString& url) {
    return url.section(QStringLiteral("://"), 1).section(u'/', 0, 0).toLower();
  };
  return host(address) == host(PublicElementAddress());
}

QString ElementAddress(const Settings& settings) {
  const QString named = qEnvironmentVariable("PELORIN_ELEMENTS_URL").trimmed();
  return ElementAddressOf(named.isEmpty() ? settings.ElementsAddress.Value : named);
}

QString ElementAddressOf(const QString& typed) {
  QString address = typed.trimmed();
  if (address.isEmpty()) return PublicElementAddress();
  if (!address.contains(QStringLiteral("://"))) address.prepend(QStringLiteral("https://"));
  return address.endsWith(u'/') ? address : address + u'/';
}

}  // namespace pelorin::app
