import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation

// The recorded properties of a thread.
Column {
    id: properties

    required property threadDetail detail
    required property CopyMenu copyMenu

    spacing: 16

    PropertyRow {
        width: parent.width
        label: properties.detail.project.label
        value: properties.detail.project.value
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.updated.label
        value: properties.detail.updated.value
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.source.label
        value: properties.detail.source.value
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.model.label
        value: properties.detail.model.value
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.effort.label
        value: properties.detail.effort.value
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.tokens.label
        value: properties.detail.tokens.value
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.branch.label
        value: properties.detail.branch.value
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.directory.label
        value: properties.detail.directory.value
        monospaced: true
        maximumLines: 3
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: properties.detail.threadID.label
        value: properties.detail.threadID.value
        monospaced: true
        maximumLines: 3
        copyMenu: properties.copyMenu
    }
}
