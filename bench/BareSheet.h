#pragma once

#include "Measure.h"

#include <xlsxwriter.h>

#include <stdexcept>

namespace pontrel::bench {

/// Processor seconds that the bare library takes for a spreadsheet in the folder, of which the routine writes
/// the cells of each row.
template<typename WriteCells>
[[nodiscard]] double timeBareSheet(const QString& folder, int rows, WriteCells&& writeCells) {
    const QByteArray path = (folder + QStringLiteral("/bare.xlsx")).toUtf8();
    return timed([&] {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        lxw_workbook* book = workbook_new_opt(path.constData(), &options);
        lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
        for (lxw_row_t row = 0; row < static_cast<lxw_row_t>(rows); ++row)
            writeCells(sheet, row);
        if (workbook_close(book) != LXW_NO_ERROR)
            throw std::runtime_error("the bare library failed");
    });
}

} // namespace pontrel::bench
