#include "runtime/ReportSignalSender.h"

ReportSignalSender::ReportSignalSender(QObject *parent) : QObject(parent) { }

ReportSignalSender::~ReportSignalSender() = default;
