// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/ScreenReaderRoles.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace {

constexpr char kRole[] = "screenReaderRole";

bool isPlainWindow(const QWidget& widget) {
  const Qt::WindowType type = widget.windowType();
  return type == Qt::Window || type == Qt::Tool || type == Qt::SplashScreen;
}

// The toolkit asks for each class of an object, the most derived first: dialogs have got their
// answer when it comes to the plain widget.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
  if (!object->isWidgetType()) return nullptr;
  auto* widget = static_cast<QWidget*>(object);
  const QVariant role = widget->property(kRole);
  if (role.isValid()) {
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
  }
  if (className != QLatin1String("QWidget") || !isPlainWindow(*widget)) return nullptr;
  return new QAccessibleWidget(widget, QAccessible::Window);
}

}  // namespace

void setScreenReaderRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(kRole, static_cast<int>(role));
}

void tellScreenReaderRoles() { QAccessible::installFactory(interfaceOf); }
