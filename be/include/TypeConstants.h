#pragma once

// Four-character codes that name the type of a message field, an attribute or a clipboard part.
enum {
    B_ANY_TYPE = 'ANYT',
    B_ASCII_TYPE = 'TEXT',
    B_BOOL_TYPE = 'BOOL',
    B_CHAR_TYPE = 'CHAR',
    B_DOUBLE_TYPE = 'DBLE',
    B_FLOAT_TYPE = 'FLOT',
    B_INT8_TYPE = 'BYTE',
    B_INT16_TYPE = 'SHRT',
    B_INT32_TYPE = 'LONG',
    B_INT64_TYPE = 'LLNG',
    B_MESSAGE_TYPE = 'MSGG',
    B_MESSENGER_TYPE = 'MSNG',
    B_MIME_TYPE = 'MIME',
    B_MIME_STRING_TYPE = 'MIMS',
    B_OBJECT_TYPE = 'OPTR',
    B_OFF_T_TYPE = 'OFFT',
    B_PATTERN_TYPE = 'PATN',
    B_POINTER_TYPE = 'PNTR',
    B_POINT_TYPE = 'BPNT',
    B_RAW_TYPE = 'RAWT',
    B_RECT_TYPE = 'RECT',
    B_REF_TYPE = 'RREF',
    B_RGB_COLOR_TYPE = 'RGBC',
    B_SIZE_T_TYPE = 'SIZT',
    B_SSIZE_T_TYPE = 'SSZT',
    B_STRING_TYPE = 'CSTR',
    B_TIME_TYPE = 'TIME',
    B_UINT8_TYPE = 'UBYT',
    B_UINT16_TYPE = 'USHT',
    B_UINT32_TYPE = 'ULNG',
    B_UINT64_TYPE = 'ULLG'
};

// The pseudo MIME types of URLs, for BRoster::Launch.
#define B_URL_HTTP "application/x-vnd.Be.URL.http"
#define B_URL_HTTPS "application/x-vnd.Be.URL.https"
#define B_URL_FILE "application/x-vnd.Be.URL.file"
