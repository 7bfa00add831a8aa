// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/BarcodeTexts.h"

#include <gtest/gtest.h>

namespace {

const Box kTopics[] =
    {
        {u"Tavrollo : Code Barre : code 3 de 9 (ou code 39)",
         u"C'est le code le plus simple et de taille illimitée.\n\nIl est lisible pour la plupart des lecteur de codes barre.\n\nIl permet le codage de 43 caractères : 10 chiffres, 26 lettres majuscules,\nles symboles $ % + - . / et l'espace.\n\nLe mode étendu permet de coder les 128 caractères ASCII\nà l'aide de codes de contrôles\n\nvoir http://page pour en savoir plus.",
         BoxIcon::Information, BoxButtons::Ok, Answer::Ok},
        {u"Tavrollo : Code Barre : EAN 13 (ou GenCod) - EAN 8",
         u"Ce code utilisé sur tous les articles de consommation courante (grandes surfaces...)\npermet le codage de 12 chiffres,\nle treizième chiffre étant une clé de contrôle (calculée automatiquement avec Tavrollo)\n\nLe code EAN 8 fonctionne de la même manière mais avec 7 chiffres + 1 clé.\n\nVous pouvez donc coder de 1 à 12 chiffres en EAN13\net de 1 à 7 chiffres en EAN8\n(les chiffres manquants seront remplacés par des 0)\n\nSi vous choisissez ce format EAN13 (ou EAN8),\nvous pourrez ajouter en plus de vos 12 (ou 7) chiffres\nun Addon de 2 ou 5 chiffres (optionnel)\n\nSi votre code dépasse 12 (ou 7) chiffres,\nles chiffres supplémentaires passeront automatiquement dans l'Addon.\n\nExemple en EAN13\nCoder 1234 -> 1234000000008 soit 12 chiffres + la clé calculée par Tavrollo =8)\nCoder 12345678901234 (14 chiffres -> 12 + 2 qui passent automatiquement dans l'Addon)\nCoder 12345678901234567 (17 chiffres -> 12 + 5 qui passent automatiquement dans l'Addon)\n\nvoir http://page pour en savoir plus.",
         BoxIcon::Information, BoxButtons::Ok, Answer::Ok},
        {u"Tavrollo : Code Barre : 2/5 Entrelacé",
         u"Ce code ne permet de coder que les chiffres.\nIls sont codés 2 par 2 aussi le nombre de chiffres doit-il être pair.\n\nEn cochant 'Ajouter une clé', Tavrollo calculera la clé.\nSi le nombre de chiffre est impair, Tavrollo ajoute un 0 devant\n\nvoir http://page pour en savoir plus.",
         BoxIcon::Information, BoxButtons::Ok, Answer::Ok},
        {u"Tavrollo : Code Barre : EAN 13 (ou GenCod) - EAN 8",
         u"C'est un code complexe de taille illimitée qui permet de coder\ntout l'alphabet de manière très dense (128 caractères ascii)\n\nIl est utilisé entre autre sur certaines feuilles de sécurité sociale\net sur certaines étiquettes de transport pour inscrire le numéro SSCC. (Identifiant du colis)\n\nIl n'est pas lisible par tous les lecteurs de codes barre. (faire un essai)\n\nvoir http://page pour en savoir plus.",
         BoxIcon::Information, BoxButtons::Ok, Answer::Ok},
        {u"Tavrollo : Code Barre : Police.ttf Associée", u"Lorsque vous transformez la selection en code barre,\nVous obtenez, selon la norme choisie, une suite chiffres et de signes.\n\nPour que ces signes soient sous forme de code barre,\nil faut que la police corresponde. (.ttf installées avec setup_Tavrollo)\n\nEn éditant votre modèle .rtf à l'aide de l'assistant rtf (voir bouton 'Options' onglet 'Sortie rtf'),\n\nSélectionnez le champ (&#col...#)\net changez la police comme indiqué ci-contre : 'Police .ttf associée'Taille conseillée 36",
         BoxIcon::Information, BoxButtons::Ok, Answer::Ok},
};

}  // namespace

TEST(BarcodeHelp, IsExactToTheCharacter) {
  for (int topic = 0; topic < 5; ++topic) {
    const std::optional<Box> box = barcodeHelpBox(topic, u"http://page");
    ASSERT_TRUE(box);
    EXPECT_EQ(*box, kTopics[topic]) << topic;
  }
}

TEST(BarcodeHelp, OtherTopicsShowNothing) {
  for (const int topic : {-1, 5, 6, 255}) EXPECT_FALSE(barcodeHelpBox(topic, u"x")) << topic;
}

TEST(BarcodeFailures, NameWhatIsMissing) {
  EXPECT_EQ(failures::missingFont(u"Code 128"),
            (Failure{53, u"La police \"Code 128\" manque dans cette version de Tavrollo"}));
  for (const Failure& failure :
       {failures::printingCancelled(), failures::printerRefused(), failures::barcodeTooLarge()}) {
    EXPECT_TRUE(failure);
    EXPECT_FALSE(failure.description.empty());
  }
}
