/* A library of somebody else: the class "Sibling.Counter", as a C programmer would write it. */
#include <string.h>
#include <strings.h>

#include "quillbox/automation.h"

enum { COUNT, FRIEND, ADD, DOUBLE, FAIL, MEMBERS };

static const QbParameter kN[] = {{"N", "Long", 0, 0}};
static const QbParameter kRefN[] = {{"N", "Long", 1, 0}};
static const QbMember kMembers[] = {{"Count", QB_PROPERTY, "Long", "The count.", 0, NULL},
                                    {"Friend", QB_PROPERTY, "Object", "Any object.", 0, NULL},
                                    {"Add", QB_METHOD, "Long", "Counts up.", 1, kN},
                                    {"Double", QB_METHOD, "", "Doubles.", 1, kRefN},
                                    {"Fail", QB_METHOD, "", "Fails.", 0, NULL}};
static const QbClass kCounter = {"Counter", "Counts.", 1, -1, MEMBERS, kMembers, 0, NULL};
static const QbMember kFactoryMembers[] = {{"CreateInstance", QB_METHOD, "Object", "A new object.", 0, NULL}};
static const QbClass kFactory = {"Factory", "", 0, -1, 1, kFactoryMembers, 0, NULL};

typedef struct Counter {
    QbObject base;
    long references;
    int32_t count;
    QbObject *friend_;
} Counter;

int32_t siblingAlive = 0;

static int32_t fail(QbError *error, int32_t number, const char *text) {
    if (error) {
        error->number = number;
        error->description = malloc(strlen(text) + 1);
        if (error->description) strcpy(error->description, text);
    }
    return QB_FAILED;
}

static void retain(QbObject *self) { ++((Counter *)self)->references; }

static void release(QbObject *self) {
    Counter *counter = (Counter *)self;
    if (--counter->references > 0) return;
    if (counter->friend_) counter->friend_->table->release(counter->friend_);
    --siblingAlive;
    free(counter);
}

static const QbClass *describe(QbObject *self) {
    (void)self;
    return &kCounter;
}

static int32_t giveInteger(QbValue *value, int32_t number) {
    if (value) {
        value->kind = QB_INTEGER;
        value->as.integer = number;
    }
    return QB_OK;
}

static int32_t countMember(Counter *self, int32_t access, QbValue *value, QbError *error) {
    if (access == QB_READ) return giveInteger(value, self->count);
    if (value->kind != QB_INTEGER) return fail(error, 13, "A number is needed");
    self->count = value->as.integer;
    return QB_OK;
}

static int32_t friendMember(Counter *self, int32_t access, QbValue *value, QbError *error) {
    if (access == QB_READ) {
        value->kind = self->friend_ ? QB_OBJECT : QB_EMPTY;
        value->as.object = self->friend_;
        if (self->friend_) self->friend_->table->retain(self->friend_);
        return QB_OK;
    }
    if (access != QB_WRITE_OBJECT) return fail(error, 13, "An object is needed");
    if (self->friend_) self->friend_->table->release(self->friend_);
    self->friend_ = value->kind == QB_OBJECT ? value->as.object : NULL;
    if (self->friend_) self->friend_->table->retain(self->friend_);
    return QB_OK;
}

static int32_t invoke(QbObject *object, int32_t slot, int32_t access, QbValue *arguments, size_t count,
                      QbValue *value, QbError *error) {
    Counter *self = (Counter *)object;
    switch (slot) {
        case COUNT: return countMember(self, access, value, error);
        case FRIEND: return friendMember(self, access, value, error);
        case ADD:
            if (count != 1 || arguments[0].kind != QB_INTEGER) return fail(error, 13, "Add what?");
            return giveInteger(value, self->count += arguments[0].as.integer);
        case DOUBLE:
            if (count == 1) arguments[0].as.integer *= 2;
            return QB_OK;
        default: return fail(error, 77, "The sibling fails");
    }
}

static int32_t invokeByName(QbObject *self, const char *name, int32_t access, QbValue *arguments, size_t count,
                            QbValue *value, QbError *error) {
    for (int32_t slot = 0; slot < MEMBERS; ++slot) {
        if (strcasecmp(kMembers[slot].name, name) == 0) {
            return invoke(self, slot, access, arguments, count, value, error);
        }
    }
    return fail(error, 438, "The sibling has no such member");
}

static int32_t noEvents(QbObject *self, int32_t event, QbObject *sink, int32_t *connection, QbError *error) {
    (void)self, (void)event, (void)sink, (void)connection;
    return fail(error, 1, "The sibling has no events");
}

static int32_t noConnection(QbObject *self, int32_t connection) {
    (void)self, (void)connection;
    return QB_FALSE;
}

static const QbObjectTable kCounterTable = {
    QB_AUTOMATION_VERSION, retain, release, describe, invoke, invokeByName, noEvents, noConnection};

/* The one factory is never freed. */
static void keep(QbObject *self) { (void)self; }

static const QbClass *describeFactory(QbObject *self) {
    (void)self;
    return &kFactory;
}

static int32_t createInstance(QbObject *self, int32_t slot, int32_t access, QbValue *arguments, size_t count,
                              QbValue *value, QbError *error) {
    Counter *made = calloc(1, sizeof *made);
    (void)self, (void)slot, (void)access, (void)arguments, (void)count;
    if (!made) return fail(error, 7, "Out of memory");
    made->base.table = &kCounterTable;
    made->references = 1;
    ++siblingAlive;
    value->kind = QB_OBJECT;
    value->as.object = &made->base;
    return QB_OK;
}

static int32_t createByName(QbObject *self, const char *name, int32_t access, QbValue *arguments, size_t count,
                            QbValue *value, QbError *error) {
    (void)name;
    return createInstance(self, 0, access, arguments, count, value, error);
}

static const QbObjectTable kFactoryTable = {
    QB_AUTOMATION_VERSION, keep, keep, describeFactory, createInstance, createByName, noEvents, noConnection};
static QbObject factory = {&kFactoryTable};

int32_t DllGetClassObject(const char *classId, uint32_t version, QbObject **classObject) {
    if (version != QB_AUTOMATION_VERSION) return QB_NO_VERSION;
    if (strcmp(classId, "{COUNTER}") != 0) return QB_NO_CLASS;
    *classObject = &factory;
    return QB_OK;
}
