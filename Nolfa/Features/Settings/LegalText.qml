import NolfaKit.DesignSystem
import QtQuick

/// Whose work conversions stand on.
Note {
    en: "Conversions use bundled open-source tools (pandoc, GPL) run as separate processes."
    fr: "Les conversions utilisent des outils libres fournis avec l’application (pandoc, sous licence GPL), exécutés comme des processus distincts."
}
