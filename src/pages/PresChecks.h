// The checks of a block's presentation record: title and size, images, image texts and ports.
// They look at records only; the presentation page gathers what they need.
#pragma once

#include <QStringList>

class ErrorList;
struct BlkParaData;
struct BlkPresData;

struct PresCheckContext {
    BlkPresData *data = nullptr;             // the checks repair bad sizes and stray fields in it
    const BlkParaData *para_data = nullptr;  // Parameters
    const BlkParaData *config = nullptr;     // Configuration; null reads as a primary block
    QStringList image_names;                 // the block's drawings, without their extension
};

// "Block Primary/Secondary" exists and is not "Primary"; a missing entity reads as primary.
bool IsNonPrimaryBlock(const BlkParaData *config);

void ValidatePresHeaderData(const PresCheckContext &context, ErrorList *error_list);
void ValidatePresImagesData(const PresCheckContext &context, ErrorList *error_list);
void ValidatePresTextsData(const PresCheckContext &context, ErrorList *error_list);
void ValidatePresPortsData(const PresCheckContext &context, ErrorList *error_list);
