#pragma once

#include "config/Export.h"

#include <QObject>

/// Carries a signal of those who report to those who wait for replies to reports.
class ONDPDFTOOLUTILS_EXPORT ReportSignalSender : public QObject
{
    Q_OBJECT

public:
    /// Owned by `parent` if there is one.
    explicit ReportSignalSender(QObject *parent = nullptr);
    ~ReportSignalSender() override;

Q_SIGNALS:
    /// Listeners are to stop waiting for a reply.
    void stopWaitForReply();
};
