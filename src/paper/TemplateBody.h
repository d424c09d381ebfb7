#pragma once

#include "paper/Template.h"
#include "paper/TemplateNames.h"
#include "paper/TemplateText.h"

namespace pontrel::paper {

/// Reads what a template shows of each record: the columns, the card or the flow below the root. Throws
/// TemplateFault.
void readBody(const TemplateText& source, const XmlElement& root, TemplateNames& names, Template& made);

} // namespace pontrel::paper
