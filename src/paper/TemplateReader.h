#pragma once

#include "paper/Template.h"
#include "paper/TemplateText.h"

namespace pontrel::paper {

/// Reads a template from its file. Throws error 53 where there is none, 75 where it cannot be read, and
/// TemplateFault where it cannot be used.
[[nodiscard]] Template readTemplate(const QString& path);

/// The same from a text.
[[nodiscard]] Template readTemplate(const TemplateText& source);

} // namespace pontrel::paper
