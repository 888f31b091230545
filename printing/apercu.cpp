#include "printing/apercu.h"

#include <QPrintPreviewDialog>
#include <QPrinter>

#include "printing/qt_surface.h"
#include "printing/rendu.h"

namespace printing {

void DessineApercu(const Enregistrement& enregistrement, QPrinter& imprimante) {
  QtSurface surface(std::unique_ptr<QPagedPaintDevice>(&imprimante), "l'aperçu");
  // The preview keeps its printer: it is handed back however the drawing ends.
  struct Restitution {
    QtSurface& surface;
    ~Restitution() { static_cast<void>(surface.RendDevice().release()); }
  } restitution{surface};
  Rejoue(enregistrement, surface);
}

std::unique_ptr<QPrintPreviewDialog> Apercu(const Enregistrement& enregistrement,
                                            QPrinter& imprimante, QWidget* parent) {
  auto dialogue = std::make_unique<QPrintPreviewDialog>(&imprimante, parent);
  dialogue->setWindowTitle(QStringLiteral("Aperçu avant impression"));
  QObject::connect(dialogue.get(), &QPrintPreviewDialog::paintRequested,
                   [&enregistrement](QPrinter* p) { DessineApercu(enregistrement, *p); });
  return dialogue;
}

}  // namespace printing
