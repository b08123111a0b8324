#include "app/BlkDefFileIO.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/WaitCursor.h"
#include "app/XmlText.h"
#include "drawing/ImgDataRec.h"
#include "drawing/ImgEditFileIO.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "params/ConfigurationEntities.h"
#include "schematics/BlkSchemeData.h"
#include "schematics/BlkSchemeFileIO.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QXmlStreamWriter>

BlkDefFileIO::BlkDefFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                           QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 1, 1, 0, parent)
{
}

BlkDefData *BlkDefFileIO::ReadDefData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_def_data"))
        return nullptr;
    auto *data = new BlkDefData;
    while (NextInside(reader, "blk_def_data")) {
        if (IsStart(reader, "param_changed")) {
            data->param_changed = ElementText(reader).toUInt() != 0;
        } else if (IsStart(reader, "wsp_mod_files")) {
            data->wsp_mod_files = ElementText(reader).split('|', Qt::SkipEmptyParts);
            break; // the sections follow inside the same element
        }
    }
    if (reader->hasError()) {
        delete data;
        return nullptr;
    }
    return data;
}

void BlkDefFileIO::WriteDefData(QXmlStreamWriter *writer, const BlkDefData *data)
{
    const BlkDefData empty;
    if (!data)
        data = &empty;
    writer->writeTextElement(QStringLiteral("param_changed"), QString::number(data->param_changed));
    writer->writeTextElement(QStringLiteral("wsp_mod_files"), data->wsp_mod_files.join('|'));
}

void BlkDefFileIO::WriteDefStart(QXmlStreamWriter *writer)
{
    writer->writeStartElement(QStringLiteral("blk_def_data"));
}

namespace {

QStringList DefinitionFiles(const QString &block_path, const QString &name_hint)
{
    const QStringList filter{QStringLiteral("*.bdef")};
    QStringList files;
    const QDir dir(block_path);
    for (const QString &name : dir.entryList(filter, QDir::Files, QDir::Name))
        files.append(dir.filePath(name));
    if (!files.isEmpty() || name_hint.isEmpty())
        return files;
    QDirIterator it(block_path, filter, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    for (const QString &file : files)
        if (QFileInfo(file).fileName() == name_hint)
            return {file};
    return files;
}

// "<dir>/<dir name>.bdef", the name a new block's file gets.
QString DefaultDefinitionFile(const QString &block_path)
{
    const QString dir = QDir::cleanPath(block_path);
    return dir + "/" + QFileInfo(dir).fileName() + ".bdef";
}

void DropDeletedWorkspaces(BlkDefData *def_data, const QString &block_path)
{
    const QDir dir(block_path);
    for (int i = def_data->wsp_mod_files.size() - 1; i >= 0; --i)
        if (!QFileInfo::exists(dir.filePath(def_data->wsp_mod_files[i])))
            def_data->wsp_mod_files.removeAt(i);
}

void ReadImages(QXmlStreamReader *reader, BlockData *block, ErrorList *error_list,
                const QString &title, bool silent)
{
    QList<ImgDataRec *> images;
    while (ImgDataRec *image = ImgEditFileIO::ReadImgData(reader))
        images.append(image);
    if (images.isEmpty() && !reader->hasError()) {
        const QDir dir(block->path);
        for (const QString &name : dir.entryList({QStringLiteral("*.vimg")}, QDir::Files, QDir::Name)) {
            ImgEditFileIO io(QString(), error_list, silent);
            if (ImgDataRec *image = io.LoadImgFile(dir.filePath(name), title))
                images.append(image);
        }
    }
    if (!images.isEmpty())
        block->images = new QList<ImgDataRec *>(images);
}

} // namespace

bool LoadBlockData(BlockData *block, const QString &name_hint, ErrorList *error_list,
                   const QString &title, bool silent)
{
    const QStringList files = DefinitionFiles(block->path, name_hint);
    // A directory without a definition file still goes through the open, so the failure is told.
    const QString file = files.isEmpty() ? DefaultDefinitionFile(block->path) : files.first();
    BlkDefFileIO io(QString(), error_list, silent);
    QXmlStreamReader *reader = io.OpenForRead(file, title);
    if (!reader)
        return false;
    block->def_data = BlkDefFileIO::ReadDefData(reader);
    if (!block->def_data) {
        io.CloseRead(file, title); // reports what broke the file
        return false;
    }
    DropDeletedWorkspaces(block->def_data, block->path);

    WaitCursor wait;
    // Each section reader seeks forward to its element, so a section the file lacks would
    // swallow every section behind it: only the sections the text holds are read.
    const QByteArray &text = io.buffer;
    const int para_sections = text.count("<blk_para>");
    if (para_sections >= 1) {
        block->config = BlkParaFileIO::ReadBlkPara(reader, true);
        block->block_id = BlockIdOf(block->config);
        block->version = BlockVersionOf(block->config);
        block->tool_version = ToolVersionOf(block->config);
    }
    if (para_sections >= 2)
        block->params = BlkParaFileIO::ReadBlkPara(reader, true);
    if (para_sections >= 3)
        block->initconds = BlkParaFileIO::ReadBlkPara(reader, true);
    if (text.contains("<blk_pres_data"))
        block->pres = BlkPresFileIO::ReadPresData(reader);
    if (text.contains("<blk_scheme_data"))
        block->scheme = BlkSchemeFileIO::ReadSchemeData(reader);
    if (text.contains("<blk_code_data"))
        block->code = BlkCodeFileIO::ReadCodeData(reader);
    if (text.contains("<blk_misc_data"))
        block->misc = BlkMiscFileIO::ReadMiscData(reader);
    if (text.contains("<blk_help_data"))
        block->help = BlkHelpFileIO::ReadHelpData(reader);
    ReadImages(reader, block, error_list, title, silent);
    wait.Restore();

    // Converted code files are never written into a block by this program, so loading has
    // nothing of them to convert.
    if (block->pres && block->code)
        LinkPortsToCode(block->pres, block->code);
    return io.CloseRead(file, title);
}

bool SaveBlockData(BlockData *block, ErrorList *error_list, const QString &title, bool silent)
{
    QStringList files = DefinitionFiles(block->path, QString());
    const QString file = files.isEmpty() ? DefaultDefinitionFile(block->path) : files.first();
    BlkDefFileIO io(QString(), error_list, silent);
    QXmlStreamWriter *writer = io.OpenForWrite(file, title);
    if (!writer)
        return false;
    BlkDefFileIO::WriteDefStart(writer);
    BlkDefFileIO::WriteDefData(writer, block->def_data);
    AuthValuesToStored(block->config);
    BlkParaFileIO::WriteBlkPara(writer, block->config, 1);
    AuthValuesToWorking(block->config);
    BlkParaFileIO::WriteBlkPara(writer, block->params, 1);
    BlkParaFileIO::WriteBlkPara(writer, block->initconds, 1);
    BlkPresFileIO::WritePresData(writer, block->pres);
    BlkSchemeFileIO::WriteSchemeData(writer, block->scheme);
    BlkCodeFileIO::WriteCodeData(writer, block->code);
    BlkMiscFileIO::WriteMiscData(writer, block->misc);
    BlkHelpFileIO::WriteHelpData(writer, block->help);
    if (block->images)
        for (const ImgDataRec *image : *block->images)
            ImgEditFileIO::WriteImgData(writer, image);
    writer->writeEndElement();
    io.CloseWrite();
    return true;
}
