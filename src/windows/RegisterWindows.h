#pragma once

namespace pontrel {

/// Makes all module windows and child windows of the program known to Module1.
void registerWindows();

} // namespace pontrel
