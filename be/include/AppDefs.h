#pragma once

#include <SupportDefs.h>

// The system's messages: what windows, views and applications are told. Codes that begin with an
// underscore are the system's own (BMessage::IsSystem).
enum {
    B_ABOUT_REQUESTED = '_ABR',
    B_WINDOW_ACTIVATED = '_ACT',
    B_APP_ACTIVATED = '_ACA',
    B_ARGV_RECEIVED = '_ARG',
    B_QUIT_REQUESTED = '_QRQ',
    B_CLOSE_REQUESTED = '_QRQ',
    B_KEY_DOWN = '_KYD',
    B_KEY_UP = '_KYU',
    B_UNMAPPED_KEY_DOWN = '_UKD',
    B_UNMAPPED_KEY_UP = '_UKU',
    B_MODIFIERS_CHANGED = '_MCH',
    B_MINIMIZE = '_WMN',
    B_MOUSE_DOWN = '_MDN',
    B_MOUSE_MOVED = '_MMV',
    B_MOUSE_ENTER_EXIT = '_MEX',
    B_MOUSE_IDLE = '_MSI',
    B_MOUSE_UP = '_MUP',
    B_MOUSE_WHEEL_CHANGED = '_MWC',
    B_PULSE = '_PUL',
    B_READY_TO_RUN = '_RTR',
    B_REFS_RECEIVED = '_RRC',
    B_SCREEN_CHANGED = '_SCH',
    B_VALUE_CHANGED = '_VCH',
    B_VIEW_MOVED = '_VMV',
    B_VIEW_RESIZED = '_VRS',
    B_WINDOW_MOVED = '_WMV',
    B_WINDOW_RESIZED = '_WRS',
    B_WORKSPACES_CHANGED = '_WCG',
    B_WORKSPACE_ACTIVATED = '_WAC',
    B_ZOOM = '_WZM'
};

// Messages between programs and between objects.
enum {
    B_SET_PROPERTY = 'PSET',
    B_GET_PROPERTY = 'PGET',
    B_REPLY = 'RPLY',
    B_NO_REPLY = 'NONE',
    B_MESSAGE_NOT_UNDERSTOOD = 'MNOT',
    B_SIMPLE_DATA = 'DATA',
    B_MIME_DATA = 'MIME',
    B_ARCHIVED_OBJECT = 'ARCV',
    B_CUT = 'CCUT',
    B_COPY = 'COPY',
    B_PASTE = 'PSTE',
    B_SELECT_ALL = 'SALL',
    B_UNDO = 'UNDO',
    B_REDO = 'REDO',
    B_SAVE_REQUESTED = 'SAVE',
    B_CANCEL = 'CNCL',
    B_INPUT_METHOD_EVENT = 'IMEV',
    B_CLIPBOARD_CHANGED = 'CLCH',
    B_SILENT_RELAUNCH = 'AREL'
};

// "be:opcode" of B_INPUT_METHOD_EVENT.
enum {
    B_INPUT_METHOD_STARTED = 'IMST',
    B_INPUT_METHOD_STOPPED = 'IMSP',
    B_INPUT_METHOD_CHANGED = 'IMCH',
    B_INPUT_METHOD_LOCATION_REQUEST = 'IMLR'
};

// The built-in cursors, for SetCursor(const void*).
extern const unsigned char B_HAND_CURSOR[];   // the ordinary pointer
extern const unsigned char B_I_BEAM_CURSOR[]; // over editable text
