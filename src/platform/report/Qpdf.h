#pragma once

#include "runtime/LateFunction.h"

#include <qpdf/qpdf-c.h>

namespace report {

/// The address of a function of qpdf. Raises kOutput when the library is not on this machine.
[[nodiscard]] QFunctionPointer qpdfFunction(const char *name);

// In this namespace the names below hide qpdf's own. So the library, which brings some ten others
// along, is loaded when the first PDF file is written, and a start is spared some 2 ms and 5 MB.
#define QPDF_FUNCTION(name)                                                                        \
    inline constinit const LateFunction<decltype(::name), qpdfFunction> name(#name)
QPDF_FUNCTION(qpdf_cleanup);
QPDF_FUNCTION(qpdf_get_num_pages);
QPDF_FUNCTION(qpdf_get_page_n);
QPDF_FUNCTION(qpdf_get_root);
QPDF_FUNCTION(qpdf_get_trailer);
QPDF_FUNCTION(qpdf_init);
QPDF_FUNCTION(qpdf_init_write);
QPDF_FUNCTION(qpdf_oh_begin_dict_key_iter);
QPDF_FUNCTION(qpdf_oh_dict_more_keys);
QPDF_FUNCTION(qpdf_oh_dict_next_key);
QPDF_FUNCTION(qpdf_oh_get_array_item);
QPDF_FUNCTION(qpdf_oh_get_key);
QPDF_FUNCTION(qpdf_oh_new_unicode_string);
QPDF_FUNCTION(qpdf_oh_parse);
QPDF_FUNCTION(qpdf_oh_release_all);
QPDF_FUNCTION(qpdf_oh_replace_key);
QPDF_FUNCTION(qpdf_read);
QPDF_FUNCTION(qpdf_write);
#undef QPDF_FUNCTION

} // namespace report
