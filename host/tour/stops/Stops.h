#pragma once

#include <QStringView>

namespace screentour {

class Guide;

/// Which orders are issued credit notes: the tour leaves the newest of them on paper and as EHF.
inline constexpr QStringView kIssuedCreditNotes = u"OrdreStatus<>'Ordre' AND SumBrutto<0";

/// The stops of the tour, one function a screen, each in a file of its own beside this one. The
/// main menu is open at each of them, and a stop leaves the screens closed that it has opened. The
/// database may have seen earlier tours, so a stop that changes data must find something to change
/// each time. The order of the tour stands in ScreenTour.cpp, and that of its pictures in the test.

void visitMenu(Guide &guide);
/// The help of the screen in front, by its key and by its picture, with a search in it.
void visitHelp(Guide &guide);
void visitProducts(Guide &guide);
/// The price form, which no screen of the component opens: the host shows its own copy.
void visitPriceForm(Guide &guide);
/// Enters an order with the customer picker, saves it, and begins a credit note of it.
void visitOrders(Guide &guide);
/// Prints the last order into the preview and to a PDF file, and writes it as an EHF file.
void visitPrinting(Guide &guide);
/// Posts the tour's invoice with an older one and shows the voucher and the two journals.
void visitPosting(Guide &guide);
/// Surveys all orders, opens the newest credit note there and prints a copy of it, and runs the two
/// list reports; each report is saved as PDF.
void visitOverview(Guide &guide);
/// The three pages of the settings; nothing is stored.
void visitOptions(Guide &guide);
/// The timed note, from the host's own copy of it.
void visitNote(Guide &guide);

} // namespace screentour
