// The icons behind the ":/icon-..." names live in a static library's resources, which must be
// registered once before the first use.
#pragma once

void InitIcons();
