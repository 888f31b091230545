#include "app/gui/recherche.h"

namespace hote {

QString SansAccents(const QString& texte) {
  // Decomposed, "è" is "e" and a combining accent, which is dropped.
  const QString decompose = texte.normalized(QString::NormalizationForm_KD);
  QString simple;
  simple.reserve(decompose.size());
  for (const QChar c : decompose) {
    if (c.category() != QChar::Mark_NonSpacing) simple += c;
  }
  return simple.toCaseFolded();
}

void FiltreRecherche::Cherche(const QString& texte) {
  mots_ = SansAccents(texte).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

bool FiltreRecherche::filterAcceptsRow(int ligne, const QModelIndex& parent) const {
  if (mots_.isEmpty()) return true;
  QString colonnes;
  for (int c = 0; c < sourceModel()->columnCount(parent); ++c) {
    colonnes += SansAccents(sourceModel()->index(ligne, c, parent).data().toString());
    colonnes += QLatin1Char(' ');
  }
  for (const QString& mot : mots_) {
    if (!colonnes.contains(mot)) return false;
  }
  return true;
}

}  // namespace hote
