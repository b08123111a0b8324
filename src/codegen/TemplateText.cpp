#include "codegen/TemplateText.h"

#include "codegen/TemplateContext.h"

// Placeholder until the texts are written.
QString TemplateBanner() { return {}; }
QString TemplateHeaderText(const TemplateContext &) { return {}; }
QString TemplateSourceText(const TemplateContext &) { return {}; }
QString FortranTemplateText(const TemplateContext &) { return {}; }
QString PythonTemplateText(const TemplateContext &) { return {}; }
