// The texts of the generated files: header, C++ source, Fortran and Python templates.
#pragma once

#include <QString>

struct TemplateContext;

// The six-line comment that opens the header and the source.
QString TemplateBanner();
QString TemplateHeaderText(const TemplateContext &context);
QString TemplateSourceText(const TemplateContext &context);
QString FortranTemplateText(const TemplateContext &context);
QString PythonTemplateText(const TemplateContext &context);
