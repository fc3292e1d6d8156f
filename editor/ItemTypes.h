#pragma once

/// The kinds of items on a canvas, by which items are told apart.
enum ItemType {
    ElementItemType = 10001,
    ElementNodeItemType = 10002,
    NodeItemType = 10003,
    TextBoxItemType = 10005,
    ElementPropertyTextBoxItemType = 10006
};
