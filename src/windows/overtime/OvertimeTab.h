#pragma once

namespace pontrel {

// What the tabs of the overtime window share.

enum OvertimeTab { OvertimeEntryTab, OvertimeBatchTab, OvertimeListTab, OvertimeTotalTab };

/// Of all code boxes of the window: it remembers no more than whether the code that was changed last is an
/// unknown one, on whatever tab.
inline constexpr int UnknownCode = 1;

} // namespace pontrel
