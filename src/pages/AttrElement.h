// Reading of the section elements whose content is their attributes.
#pragma once

#include "app/XmlText.h"

// Calls take on the element's start tag and again on every token up to its end tag. Content
// between the tags therefore blanks the fields: deliberate, our writer never puts any there.
template <typename Take>
void ReadAttrElement(QXmlStreamReader *reader, const char *name, Take take)
{
    do {
        take(reader);
        reader->readNext();
    } while (!reader->atEnd() && !reader->hasError() && !IsEnd(reader, name));
}
