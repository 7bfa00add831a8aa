// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeTexts.h"

namespace {

Box helpBox(TextView title, const Text& text) {
  return {.title = Text(title), .text = text, .icon = BoxIcon::Information};
}

Text fontPageLine(TextView fontPage) {
  return u"voir " + Text(fontPage) + u" pour en savoir plus.";
}

Box code39Help(TextView fontPage) {
  return helpBox(u"Tavrollo : Code Barre : code 3 de 9 (ou code 39)",
                 u"C'est le code le plus simple et de taille illimitée.\n\n"
                 u"Il est lisible pour la plupart des lecteur de codes barre.\n\n"
                 u"Il permet le codage de 43 caractères : 10 chiffres, 26 lettres majuscules,\n"
                 u"les symboles $ % + - . / et l'espace.\n\n"
                 u"Le mode étendu permet de coder les 128 caractères ASCII\n"
                 u"à l'aide de codes de contrôles\n\n" +
                     fontPageLine(fontPage));
}

constexpr TextView kEanTitle = u"Tavrollo : Code Barre : EAN 13 (ou GenCod) - EAN 8";

Box eanHelp(TextView fontPage) {
  return helpBox(
      kEanTitle,
      u"Ce code utilisé sur tous les articles de consommation courante (grandes surfaces...)\n"
      u"permet le codage de 12 chiffres,\n"
      u"le treizième chiffre étant une clé de contrôle (calculée automatiquement avec Tavrollo)\n\n"
      u"Le code EAN 8 fonctionne de la même manière mais avec 7 chiffres + 1 clé.\n\n"
      u"Vous pouvez donc coder de 1 à 12 chiffres en EAN13\n"
      u"et de 1 à 7 chiffres en EAN8\n"
      u"(les chiffres manquants seront remplacés par des 0)\n\n"
      u"Si vous choisissez ce format EAN13 (ou EAN8),\n"
      u"vous pourrez ajouter en plus de vos 12 (ou 7) chiffres\n"
      u"un Addon de 2 ou 5 chiffres (optionnel)\n\n"
      u"Si votre code dépasse 12 (ou 7) chiffres,\n"
      u"les chiffres supplémentaires passeront automatiquement dans l'Addon.\n\n"
      u"Exemple en EAN13\n"
      u"Coder 1234 -> 1234000000008 soit 12 chiffres + la clé calculée par Tavrollo =8)\n"
      u"Coder 12345678901234 (14 chiffres -> 12 + 2 qui passent automatiquement dans l'Addon)\n"
      u"Coder 12345678901234567 (17 chiffres -> 12 + 5 qui passent automatiquement dans "
      u"l'Addon)\n\n" +
          fontPageLine(fontPage));
}

Box interleavedHelp(TextView fontPage) {
  return helpBox(u"Tavrollo : Code Barre : 2/5 Entrelacé",
                 u"Ce code ne permet de coder que les chiffres.\n"
                 u"Ils sont codés 2 par 2 aussi le nombre de chiffres doit-il être pair.\n\n"
                 u"En cochant 'Ajouter une clé', Tavrollo calculera la clé.\n"
                 u"Si le nombre de chiffre est impair, Tavrollo ajoute un 0 devant\n\n" +
                     fontPageLine(fontPage));
}

// It goes under the title of EAN, as it always did.
Box code128Help(TextView fontPage) {
  return helpBox(
      kEanTitle,
      u"C'est un code complexe de taille illimitée qui permet de coder\n"
      u"tout l'alphabet de manière très dense (128 caractères ascii)\n\n"
      u"Il est utilisé entre autre sur certaines feuilles de sécurité sociale\n"
      u"et sur certaines étiquettes de transport pour inscrire le numéro SSCC. (Identifiant du "
      u"colis)\n\n"
      u"Il n'est pas lisible par tous les lecteurs de codes barre. (faire un essai)\n\n" +
          fontPageLine(fontPage));
}

Box fontHelp() {
  return helpBox(
      u"Tavrollo : Code Barre : Police.ttf Associée",
      u"Lorsque vous transformez la selection en code barre,\n"
      u"Vous obtenez, selon la norme choisie, une suite chiffres et de signes.\n\n"
      u"Pour que ces signes soient sous forme de code barre,\n"
      u"il faut que la police corresponde. (.ttf installées avec setup_Tavrollo)\n\n"
      u"En éditant votre modèle .rtf à l'aide de l'assistant rtf (voir bouton 'Options' onglet "
      u"'Sortie rtf'),\n\n"
      u"Sélectionnez le champ (&#col...#)\n"
      u"et changez la police comme indiqué ci-contre : 'Police .ttf associée'"
      u"Taille conseillée 36");
}

}  // namespace

std::optional<Box> barcodeHelpBox(int topic, TextView fontPage) {
  switch (topic) {
    case 0: return code39Help(fontPage);
    case 1: return eanHelp(fontPage);
    case 2: return interleavedHelp(fontPage);
    case 3: return code128Help(fontPage);
    case 4: return fontHelp();
    default: return std::nullopt;
  }
}

Failure failures::missingFont(TextView family) {
  return {53, u"La police \"" + Text(family) + u"\" manque dans cette version de Tavrollo"};
}

Failure failures::printingCancelled() { return {32755, u"L'impression a été annulée"}; }

Failure failures::printerRefused() { return {482, u"L'imprimante ne répond pas"}; }

Failure failures::barcodeTooLarge() {
  return {6, u"Le code barre est trop grand pour être lisible à cette taille"};
}
