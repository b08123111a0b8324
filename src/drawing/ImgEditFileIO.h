// Reader and writer of a drawing: a standalone ".vimg" file or an imgdata section of the block
// definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct ImgDataRec;

class ImgEditFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    ImgEditFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                  QObject *parent = nullptr);

    // The first drawing of the file, owned by the caller, or null.
    ImgDataRec *LoadImgFile(const QString &path, const QString &title);

    // Skips to the next imgdata and reads it; null at the end of input or on an XML error.
    // Called again on the same stream it gives the following drawing.
    static ImgDataRec *ReadImgData(QXmlStreamReader *reader);
    // One imgdata element where the writer stands; the caller owns the document.
    static void WriteImgData(QXmlStreamWriter *writer, const ImgDataRec *data);
};
