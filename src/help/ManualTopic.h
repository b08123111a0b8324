// The program's own manual, opened at a numbered topic.
#pragma once

#include <QString>
#include <QUrl>

// Starts the external help viewer "hh" when the system has one; otherwise opens our HTML manual
// under `root`/help in the desktop's browser at the page of `map_id`. Nothing is reported.
void ShowManualTopic(const QString &root, int map_id, const QString &topic);
// The page of the HTML manual for `map_id`; the manual's start page for an unknown number.
QUrl ManualTopicUrl(const QString &root, int map_id);
