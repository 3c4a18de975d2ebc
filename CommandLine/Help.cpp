#include "Help.h"

#include "Localization/NolfaL10n.h"

namespace nolfa::CommandLine::Help {

namespace {

std::string common()
{
    return T(R"(  --lang system|en|fr     the language of messages and dates
  --paper a4|usLetter     the paper of what is laid out on pages
  --quiet                 no progress
  -h, --help              this page
)",
        R"(  --lang system|en|fr     la langue des messages et des dates
  --paper a4|usLetter     le papier de ce qui est mis en pages
  --quiet                 sans avancement
  -h, --help              cette page
)");
}

std::string exitStatus()
{
    return T(R"(
Exit status: 0 all succeeded, 1 a document failed, 2 wrong usage, 130 interrupted.
)",
        R"(
Code de retour : 0 tout a réussi, 1 un document a échoué, 2 mauvais usage, 130 interrompu.
)");
}

} // namespace

std::string overview()
{
    return T(R"(Nolfa: documents ⇄ Markdown, on your own machine.

Usage: nolfa-cli VERB …

  convert    documents into another format
  compare    two documents, word by word
  watermark  a text over the pages of a copy of a PDF
  formats    what can be converted into what

  nolfa-cli VERB --help   tells more
  --version               prints the version
)",
               R"(Nolfa : documents ⇄ Markdown, sur votre machine.

Usage : nolfa-cli VERBE …

  convert    des documents dans un autre format
  compare    deux documents, mot à mot
  watermark  un texte sur les pages d’une copie d’un PDF
  formats    ce qui se convertit en quoi

  nolfa-cli VERBE --help  en dit plus
  --version               affiche la version
)") + common()
        + exitStatus();
}

std::string convert()
{
    return T(R"(Usage: nolfa-cli convert INPUT… --to FORMAT [--into DIR] [--jobs N]

Converts each INPUT and prints the path of each output. Inputs are never changed, and nothing is overwritten: where
a name is taken, "report 2.md" follows "report.md".

  --to FORMAT             markdown, docx, pptx …: nolfa-cli formats lists them
  --into DIR              an existing folder for the outputs; without it they lie beside their inputs
  --jobs N                how many documents at once (default: half the processors, at least 2)
)",
               R"(Usage : nolfa-cli convert FICHIER… --to FORMAT [--into DOSSIER] [--jobs N]

Convertit chaque FICHIER et affiche le chemin de chaque résultat. Les originaux ne sont jamais modifiés, et rien n’est
écrasé : quand un nom est pris, « report 2.md » suit « report.md ».

  --to FORMAT             markdown, docx, pptx… : nolfa-cli formats en donne la liste
  --into DOSSIER          un dossier existant pour les résultats ; sinon ils sont à côté des originaux
  --jobs N                combien de documents à la fois (par défaut la moitié des processeurs, au moins 2)
)") + common()
        + exitStatus();
}

std::string compare()
{
    return T(R"(Usage: nolfa-cli compare ORIGINAL REVISED [--report FILE] [--json]

Compares two documents of any format that Markdown can be made of, word by word, and prints what changed, as Markdown.
Nothing is overwritten: where a name is taken, "report 2.pdf" follows "report.pdf".

  --report FILE           write it to a file that ends in .md or .pdf, and print that file's path
  --json                  print it for programs, with everything that is known: docs/comparison-json.md tells how
)",
               R"(Usage : nolfa-cli compare ORIGINAL RÉVISÉ [--report FICHIER] [--json]

Compare mot à mot deux documents de tout format dont on peut tirer du Markdown, et affiche ce qui a changé, en Markdown.
Rien n’est écrasé : quand un nom est pris, « rapport 2.pdf » suit « rapport.pdf ».

  --report FICHIER        l’écrire dans un fichier en .md ou .pdf, et afficher le chemin de ce fichier
  --json                  l’afficher pour les programmes, avec tout ce qui est su : voyez docs/comparison-json.md
)") + common()
        + exitStatus();
}

std::string formats()
{
    return T(R"(Usage: nolfa-cli formats [--json]

Lists what can be converted into what on this machine, how good the result will be, and what to expect.

  --json                  for programs: an object with "version" (1) and "routes", each with "source", "target",
                          "tier" (excellent, good, bestEffort), "note" (or null), "isMacOnly", "requiresNetwork"
)",
               R"(Usage : nolfa-cli formats [--json]

Indique ce qui se convertit en quoi sur cette machine, la qualité du résultat et à quoi s’attendre.

  --json                  pour les programmes : un objet avec « version » (1) et « routes », chacune avec « source »,
                          « target », « tier » (excellent, good, bestEffort), « note » (ou null), « isMacOnly »,
                          « requiresNetwork »
)") + common();
}

std::string watermark()
{
    return T(R"(Usage: nolfa-cli watermark INPUT.pdf --text TEXT --output OUT.pdf [options]

Writes a copy of INPUT.pdf with TEXT over its pages, and prints its path. The copy keeps what each page shows, and loses
annotations, links and form fields. INPUT.pdf is never changed; a file that lies at OUT.pdf is replaced.

  --font NAME             PostScript name (default Newsreader24pt-SemiBold); Helvetica when it is missing
  --size N                points (default: by the page)
  --color RRGGBB          default 6E2433
  --opacity X             0 to 1 (default 0.18)
  --angle D               degrees, counter-clockwise (default -45)
  --placement PLACE       diagonal (default), horizontalCenter or tiled
  --pages PAGES           all (default), a range such as 2-5, or numbers such as 1,4,9
  --spacing N             points between tiles (default 48)
)",
               R"(Usage : nolfa-cli watermark ENTRÉE.pdf --text TEXTE --output SORTIE.pdf [options]

Écrit une copie d’ENTRÉE.pdf avec TEXTE sur ses pages, et affiche son chemin. La copie garde ce que chaque page montre,
et perd les annotations, les liens et les champs de formulaire. ENTRÉE.pdf n’est jamais modifié ; un fichier qui se
trouve à la place de SORTIE.pdf est remplacé.

  --font NOM              nom PostScript (par défaut Newsreader24pt-SemiBold) ; Helvetica s’il manque
  --size N                points (par défaut selon la page)
  --color RRVVBB          par défaut 6E2433
  --opacity X             de 0 à 1 (par défaut 0.18)
  --angle D               degrés, dans le sens inverse des aiguilles d’une montre (par défaut -45)
  --placement ENDROIT     diagonal (par défaut), horizontalCenter ou tiled
  --pages PAGES           all (par défaut), un intervalle comme 2-5, ou des numéros comme 1,4,9
  --spacing N             points entre les tuiles (par défaut 48)
)") + common()
        + exitStatus();
}

} // namespace nolfa::CommandLine::Help
