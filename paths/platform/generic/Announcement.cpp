#include "paths/platform/Announcement_p.h"

#include <QAccessible>
#include <QWidget>

namespace platform {

void announce(QWidget *source, const QString & /*text*/)
{
    QAccessibleEvent alert(source, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace platform
