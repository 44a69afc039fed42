// readers/column_header.cpp - reads label line and first row of a column file.
#include "readers/column_header.h"

#include "text/fields.h"
#include "text/fixed_text.h"

utl_line crv_ReadColumnHeader(utl_line_reader *lines, int label_line, int first_line,
                              crv_column_header *header) {
    utl_line line = {{}, utl_line_status::eof};
    for (int64_t number = 1; number <= first_line; ++number) {
        line = utl_ReadLine(lines, crv_column_line_limit);
        if (line.status == utl_line_status::eof) break;
        if (number != label_line) continue;
        utl_CopyText(header->labels, line.text);
        header->labels_status = line.status;
    }
    header->num_columns = static_cast<int>(utl_CountFields(line.text));
    return line;
}

std::string crv_ColumnLabel(std::string_view label) {
    std::string shown;
    for (size_t k = 0; k < label.size(); ++k) {
        shown += label[k];
        if (label[k] == '%' && k + 1 < label.size() && label[k + 1] == '%') ++k;
    }
    return shown;
}
