// File helpers shared by the suites.
#pragma once

#include <QByteArray>
#include <QString>

QByteArray ReadBytes(const QString &path);
// Makes missing parent directories; fails the calling test through QVERIFY at the call site.
bool WriteBytes(const QString &path, const QByteArray &bytes);
// The XML declaration the container's writer puts in front of every document.
QByteArray XmlDocument(const QByteArray &body);
// Copies the files below `from` into `to`, making directories as needed.
bool CopyTree(const QString &from, const QString &to);
