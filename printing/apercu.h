// The print preview: Qt's own preview dialog showing a recorded document,
// drawn by the same Qt surface as a PDF file or a printer, so what the
// preview shows is what the paper gets. Needs a QApplication.
#pragma once

#include <memory>

#include "printing/recording.h"

class QPrintPreviewDialog;
class QPrinter;
class QWidget;

namespace printing {

// Draws the recording on printer, the device of a preview: its paper, its
// pages in order. An empty recording draws nothing.
void DessineApercu(const Enregistrement& enregistrement, QPrinter& imprimante);

// A preview dialog showing the recording on imprimante. Both must outlive
// the dialog: it draws again whenever the user changes the view. Printing
// from the dialog goes through Qt's print dialog and that printer.
std::unique_ptr<QPrintPreviewDialog> Apercu(const Enregistrement& enregistrement,
                                            QPrinter& imprimante, QWidget* parent = nullptr);

}  // namespace printing
