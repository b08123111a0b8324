// Small reading helpers shared by every section reader.
#pragma once

#include <QString>
#include <QXmlStreamReader>

// The text of the element the reader stands on; children are read through, never an error,
// so a file with more inside an element than our writer puts there still loads.
inline QString ElementText(QXmlStreamReader *reader)
{
    return reader->readElementText(QXmlStreamReader::IncludeChildElements);
}

inline QString Attr(const QXmlStreamReader *reader, const char *name)
{
    return reader->attributes().value(QLatin1String(name)).toString();
}

inline bool IsStart(const QXmlStreamReader *reader, const char *name)
{
    return reader->isStartElement() && reader->name() == QLatin1String(name);
}

inline bool IsEnd(const QXmlStreamReader *reader, const char *name)
{
    return reader->isEndElement() && reader->name() == QLatin1String(name);
}

// Steps to the next start element of that name; false at the end of input or on an error.
inline bool SeekStart(QXmlStreamReader *reader, const char *name)
{
    while (!reader->atEnd()) {
        reader->readNext();
        if (reader->hasError())
            return false;
        if (IsStart(reader, name))
            return true;
    }
    return false;
}

// Steps on to the end tag of the element the reader stands on, for elements whose
// content is their attributes; false when the input ends or breaks first.
inline bool SkipToEnd(QXmlStreamReader *reader, const char *name)
{
    while (!reader->atEnd()) {
        reader->readNext();
        if (reader->hasError())
            return false;
        if (IsEnd(reader, name))
            return true;
    }
    return false;
}

// The loop condition of every level: not at the end, no error, not the level's end element.
inline bool NextInside(QXmlStreamReader *reader, const char *name)
{
    if (reader->atEnd())
        return false;
    reader->readNext();
    return !reader->hasError() && !IsEnd(reader, name) && !reader->atEnd();
}
