// The fixed table of a block's Configuration, and the authentication entities inside it.
#pragma once

#include <QString>
#include <QStringList>

struct BlkParaData;

// From this licence level on, the entities kept for the product's vendor become editable.
constexpr int kVendorLicenceLevel = 2;

// A new table with every group, entity and control at its default, owned by the caller.
// "Block ID" is a fresh random number at each call.
BlkParaData *BuildConfigurationEntities(int licence_level = 0);

QString AuthGroupHeader();
QStringList AuthEntityLabels();
QString AuthValueType();

// The authentication values are kept as base64 of their UTF-8 text while written to a file.
// The two are inverses and neither is idempotent: call each once per write. A stored value
// that is not valid base64 is left as it is. Null or a table without the group is allowed.
void AuthValuesToStored(BlkParaData *config);
void AuthValuesToWorking(BlkParaData *config);
