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
        label: "项目"
        value: properties.detail.project
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "更新时间"
        value: properties.detail.updated
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "来源"
        value: properties.detail.source
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "模型"
        value: properties.detail.model
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "推理强度"
        value: properties.detail.effort
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "Token"
        value: properties.detail.tokens
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "分支"
        value: properties.detail.branch
        monospaced: true
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "工作目录"
        value: properties.detail.directory
        monospaced: true
        maximumLines: 3
        copyMenu: properties.copyMenu
    }
    PropertyRow {
        width: parent.width
        label: "Thread ID"
        value: properties.detail.threadID
        monospaced: true
        maximumLines: 3
        copyMenu: properties.copyMenu
    }
}
