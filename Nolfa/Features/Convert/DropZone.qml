import NolfaKit.DesignSystem
import QtQuick

/// Takes files in: dropped ones anywhere on `dropTarget`, others by its button.
Item {
    id: root

    enum Mode { Hero, Strip }

    property int mode: DropZone.Mode.Hero
    /// A drag is over the zone.
    property bool targeted: area.containsDrag
    /// Where files may be dropped.
    property Item dropTarget: root

    readonly property bool isHero: mode === DropZone.Mode.Hero
    readonly property string prompt: targeted ? L10n.T("Release to add them", "Relâchez pour les ajouter")
        : isHero ? L10n.T("Drop documents here", "Déposez vos documents ici")
        : L10n.T("Drop more documents", "Déposez d’autres documents")
    readonly property string chooseLabel: L10n.T("Choose files…", "Choisir des fichiers…")
    /// What takes the keyboard's focus.
    readonly property Item button: look.item ? look.item.button : null

    /// Where the well ends, which is where the zone's own text does.
    readonly property real wellBottom: isHero && look.item ? look.item.wellBottom : height

    signal urls(var list)
    signal chooseRequested()

    implicitHeight: look.item ? look.item.implicitHeight : 0

    Loader {
        id: look
        anchors.fill: parent
        sourceComponent: root.isHero ? hero : strip
    }

    Component {
        id: hero
        DropHero {
            prompt: root.prompt
            chooseLabel: root.chooseLabel
            targeted: root.targeted
            onChooseRequested: root.chooseRequested()
        }
    }
    Component {
        id: strip
        DropStrip {
            prompt: root.prompt
            chooseLabel: root.chooseLabel
            targeted: root.targeted
            onChooseRequested: root.chooseRequested()
        }
    }

    DropArea {
        id: area
        parent: root.dropTarget
        anchors.fill: parent
        keys: ["text/uri-list"]
        // Never a move: whoever drags a file here keeps it.
        onEntered: drag => drag.accept(Qt.CopyAction)
        onPositionChanged: drag => drag.accept(Qt.CopyAction)
        onDropped: drop => {
            drop.accept(Qt.CopyAction)
            root.urls(drop.urls)
        }
    }
}
