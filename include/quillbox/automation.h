/* Automation of Quillbox from C, and from every language that can call C.
 *
 * Each object is reached through one reference-counted interface, QbObject. The same interface serves in both
 * directions: a sink for events is a QbObject of the caller, and a class of another library that is
 * registered as DllRegisterServer does it, and hands out such objects, can be created from Quillbox by its
 * name.
 *
 * Ownership. What a QbValue holds belongs to whoever holds the QbValue: text is allocated with malloc and
 * freed with free, an object is one counted reference. qbClear gives both back. Arguments stay the caller's;
 * a by-reference argument is replaced in place. Text without a QbValue (names, help lines) belongs to the
 * library and lives as long as it is loaded. All text is UTF-8.
 *
 * There is one thread, the caller's.
 */
#ifndef QUILLBOX_AUTOMATION_H
#define QUILLBOX_AUTOMATION_H

#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A later version only adds functions at the end of QbObjectTable. */
#define QB_AUTOMATION_VERSION 1

/* Results. */
enum {
    QB_OK = 0,
    QB_FALSE = 1,
    QB_FAILED = -1,    /* the error says why */
    QB_NO_CLASS = -2,  /* no class with that id */
    QB_NO_VERSION = -3 /* the version asked for is not spoken */
};

typedef struct QbObject QbObject;

/* Local date and time without a zone; the zero date is 1899-12-30 00:00:00. */
typedef struct QbDate {
    int32_t year, month, day, hour, minute, second, microsecond;
} QbDate;

enum {
    QB_MISSING = 0, /* an argument that is left out, which is not the same as an empty one */
    QB_EMPTY = 1,   /* nothing; also an object that is none */
    QB_BOOLEAN = 2,
    QB_INTEGER = 3, /* also the numbers of enumerations */
    QB_SINGLE = 4,
    QB_DOUBLE = 5,
    QB_TEXT = 6,
    QB_DATE = 7,
    QB_OBJECT = 8
};

typedef struct QbText {
    char* bytes; /* followed by a zero that does not count */
    size_t size;
} QbText;

typedef struct QbValue {
    int32_t kind;
    union {
        int32_t boolean;
        int32_t integer;
        float single;
        double number;
        QbText text;
        QbDate date;
        QbObject* object;
    } as;
} QbValue;

/* Filled when a function answers QB_FAILED. The description belongs to the caller, who frees it with free. */
typedef struct QbError {
    int32_t number;
    char* description;
} QbError;

typedef struct QbParameter {
    const char* name;
    const char* type;
    int32_t byReference;
    int32_t optional;
} QbParameter;

/* Kinds of members. */
enum { QB_PROPERTY = 0, QB_PROPERTY_READ = 1, QB_PROPERTY_WRITE = 2, QB_METHOD = 3 };

typedef struct QbMember {
    const char* name;
    int32_t kind;
    const char* type; /* empty for a method without a result */
    const char* help;
    size_t parameterCount;
    const QbParameter* parameters;
} QbMember;

typedef struct QbEvent {
    const char* name;
    int32_t id;
    size_t parameterCount;
    const QbParameter* parameters;
} QbEvent;

/* A member's slot is its place in `members`, from 0, in published order. */
typedef struct QbClass {
    const char* name;
    const char* help;
    int32_t creatable;
    int32_t defaultSlot; /* -1 for none */
    size_t memberCount;
    const QbMember* members;
    size_t eventCount;
    const QbEvent* events;
} QbClass;

/* What to do with a member. The value is written by QB_READ and QB_CALL, where it may be NULL, and read by
 * the others. */
enum {
    QB_READ = 1,         /* a property */
    QB_WRITE = 2,        /* a property, with a value that is no object */
    QB_WRITE_OBJECT = 3, /* a property, with an object or QB_EMPTY for none */
    QB_CALL = 4          /* a method, or a property that is read */
};

typedef struct QbObjectTable {
    uint32_t version;
    void (*retain)(QbObject* self);
    void (*release)(QbObject* self);
    /* The description of the object's class; NULL where there is none. */
    const QbClass* (*describe)(QbObject* self);
    /* Optional arguments may be left out at the end, or by QB_MISSING between. `error` may be NULL. */
    int32_t (*invoke)(QbObject* self, int32_t slot, int32_t access, QbValue* arguments, size_t count,
                      QbValue* value, QbError* error);
    /* Names ignore case. */
    int32_t (*invokeByName)(QbObject* self, const char* name, int32_t access, QbValue* arguments,
                            size_t count, QbValue* value, QbError* error);
    /* The sink is retained, and its `invoke` is called for each event, with the event's id as slot and
     * QB_CALL. A QB_FAILED of the sink fails the call that caused the event. The connection ends with
     * `disconnect` or with the object. */
    int32_t (*connect)(QbObject* self, int32_t event, QbObject* sink, int32_t* connection, QbError* error);
    /* QB_FALSE where there is no such connection any more. */
    int32_t (*disconnect)(QbObject* self, int32_t connection);
} QbObjectTable;

/* A sink needs retain, release and invoke; the other functions of its table may be NULL. */
struct QbObject {
    const QbObjectTable* table;
};

/* Gives back what a value holds; the value is then empty. */
static inline void qbClear(QbValue* value) {
    if (value->kind == QB_TEXT) free(value->as.text.bytes);
    if (value->kind == QB_OBJECT && value->as.object) value->as.object->table->release(value->as.object);
    value->kind = QB_EMPTY;
}

/* The class object of a class id, such as "{0D0E...}": an object with the method `CreateInstance`. */
int32_t DllGetClassObject(const char* classId, uint32_t version, QbObject** classObject);

/* Writes the creatable classes with their ids and the path of this library into the machine's settings, and
 * the installation folder where none is set. */
int32_t DllRegisterServer(void);
int32_t DllUnregisterServer(void);

/* QB_OK when no object of the library is held by a caller, else QB_FALSE. */
int32_t DllCanUnloadNow(void);

#ifdef __cplusplus
}
#endif

#endif
