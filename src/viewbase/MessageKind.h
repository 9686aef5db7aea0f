#pragma once

// A message box of the frame; the caption is always "Orvane".
enum class MessageKind {
    Information, // OK, information icon
    Warning,     // OK, warning icon
    YesNo,       // question icon
    YesNoCancel, // question icon
};

// What the user answered; closing a box without a Cancel button counts as its only, or its safe, button.
enum class Answer { Ok, Yes, No, Cancel };
