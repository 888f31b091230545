// The host window printing through the print server: Qt's print dialog
// chooses the queue, the copies and the paper, and one job reaches the queue.
#include <gtest/gtest.h>

#include <QPrintDialog>
#include <QSpinBox>
#include <QTimer>

#include "app/gui/fenetre_hote.h"
#include "marbrel/outils.h"
#include "tests/cups/serveur_cups.h"

namespace {

using FenetreCups = essai_cups::AvecServeur;

TEST_F(FenetreCups, TheWindowSendsTheSelectedDossiersAsOneJobToTheQueueChosenInTheDialog) {
  hote::FenetreHote fenetre;
  fenetre.Controle().Fixe_Aujourdhui(marbrel::Outils::Date_Interne(2024, 3, 15));
  fenetre.OuvreBase(QString::fromStdString(essai_cups::BaseDemo()));
  fenetre.Selectionne({"A0001", "A0002"});
  fenetre.show();
  // The user accepts the print dialog, the default queue, asking for two
  // copies on A3. The print dialog only: a slow run also shows its progress.
  int dialogues = 0;
  QTimer accepte;
  QObject::connect(&accepte, &QTimer::timeout, [&] {
    if (auto* d = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
      ++dialogues;
      d->printer()->setPageSize(QPageSize(QPageSize::A3));
      if (auto* copies = d->findChild<QSpinBox*>("copies")) copies->setValue(2);
      d->accept();
    }
  });
  accepte.start(20);
  const hote::Bilan bilan = fenetre.Imprime();
  accepte.stop();
  EXPECT_EQ(dialogues, 1);
  ASSERT_TRUE(bilan.fait) << bilan.alertes.join("\n").toStdString();
  const int numero = bilan.resume.section('-', 1).section(' ', 0, 0).toInt();
  ASSERT_EQ(bilan.resume,
            QString("Travail CAPTURE-%1 envoyé à l'imprimante « CAPTURE ».").arg(numero));

  const essai_cups::Capture job = AttendCapture("CAPTURE", numero);
  ASSERT_EQ(job.numero, numero) << Journal();
  EXPECT_EQ(job.infos, "DOSSIER AIDE A0001 2 A3");
  const std::string texte = essai::Lance("pdftotext '" + job.fichier + "' -").sortie;
  EXPECT_NE(texte.find("A0001 MARTIN Jeanne"), std::string::npos);
  EXPECT_NE(texte.find("A0002 LEFEBVRE Marcel"), std::string::npos) << "deux dossiers, un travail";
}

}  // namespace
