// The bridge between a block's C++ code and its Python class: set-up, the copies between the C
// buffers and the Python lists, and the calls of the class's methods.
//
// The interpreter is started by the first block that needs it and never finalised: other blocks
// may still use it, and extension modules do not survive a second start. Every entry point takes
// the interpreter lock itself, so the simulation may run blocks on any thread.

// Python.h comes first: it sets feature macros that the standard headers read.
#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include "py_interface_template.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

class GilLock
{
public:
    GilLock() : m_state(PyGILState_Ensure()) {}
    ~GilLock() { PyGILState_Release(m_state); }
    GilLock(const GilLock &) = delete;
    GilLock &operator=(const GilLock &) = delete;

private:
    PyGILState_STATE m_state;
};

// The C layout behind each type code. The runtime's types are fixed-width: "Real" and "Integer"
// are the 64-bit float and the 32-bit integer.
enum class Kind { None, Text, Float32, Float64, Int16, Int32, Int64, UInt8 };

Kind KindOf(int type_code)
{
    switch (type_code) {
    case 1: return Kind::Text;
    case 2: case 4: return Kind::Float64;
    case 3: return Kind::Float32;
    case 5: case 7: return Kind::Int32;
    case 6: return Kind::Int16;
    case 8: return Kind::Int64;
    case 9: case 10: case 11: return Kind::UInt8;
    default: return Kind::None;
    }
}

// A new reference to element `i` of the buffer; null with a Python error set on failure.
PyObject *NewItem(const void *buf, Kind kind, int size, int i)
{
    switch (kind) {
    case Kind::Text: {
        const char *text = static_cast<const char *>(buf);
        // Latin-1 maps every byte to a character, so any buffer content comes back unchanged.
        return PyUnicode_DecodeLatin1(text, static_cast<Py_ssize_t>(strnlen(text, size)), nullptr);
    }
    case Kind::Float32: return PyFloat_FromDouble(static_cast<const float *>(buf)[i]);
    case Kind::Float64: return PyFloat_FromDouble(static_cast<const double *>(buf)[i]);
    case Kind::Int16: return PyLong_FromLong(static_cast<const int16_t *>(buf)[i]);
    case Kind::Int32: return PyLong_FromLong(static_cast<const int32_t *>(buf)[i]);
    case Kind::Int64: return PyLong_FromLongLong(static_cast<const int64_t *>(buf)[i]);
    case Kind::UInt8: return PyLong_FromLong(static_cast<const uint8_t *>(buf)[i]);
    case Kind::None: break;
    }
    Py_RETURN_NONE;
}

// Writes `item` into element `i`; false with a Python error set when it does not convert.
bool StoreItem(void *buf, Kind kind, int size, int i, PyObject *item)
{
    if (kind == Kind::Text) {
        if (size < 1)
            return true;
        PyObject *bytes = PyBytes_Check(item) ? (Py_INCREF(item), item)
                                              : PyUnicode_AsEncodedString(item, "latin-1", "replace");
        if (!bytes)
            return false;
        char *text = static_cast<char *>(buf);
        // Too long a text is cut, so the terminating zero always fits.
        const size_t n = std::min(static_cast<size_t>(PyBytes_GET_SIZE(bytes)),
                                  static_cast<size_t>(size - 1));
        memcpy(text, PyBytes_AS_STRING(bytes), n);
        text[n] = 0;
        Py_DECREF(bytes);
        return true;
    }
    if (kind == Kind::Float32 || kind == Kind::Float64) {
        const double value = PyFloat_AsDouble(item);
        if (value == -1.0 && PyErr_Occurred())
            return false;
        if (kind == Kind::Float32)
            static_cast<float *>(buf)[i] = static_cast<float>(value);
        else
            static_cast<double *>(buf)[i] = value;
        return true;
    }
    // A float given to an integer is cut as C would cut it: Python arithmetic makes floats easily.
    long long value;
    if (PyFloat_Check(item))
        value = static_cast<long long>(PyFloat_AS_DOUBLE(item));
    else {
        value = PyLong_AsLongLong(item);
        if (value == -1 && PyErr_Occurred())
            return false;
    }
    switch (kind) {
    case Kind::Int16: static_cast<int16_t *>(buf)[i] = static_cast<int16_t>(value); break;
    case Kind::Int32: static_cast<int32_t *>(buf)[i] = static_cast<int32_t>(value); break;
    case Kind::Int64: static_cast<int64_t *>(buf)[i] = static_cast<int64_t>(value); break;
    case Kind::UInt8: static_cast<uint8_t *>(buf)[i] = static_cast<uint8_t>(value); break;
    default: break;
    }
    return true;
}

// A text is one element however large its buffer; numbers are `size` elements.
int Count(Kind kind, int size)
{
    return kind == Kind::Text ? 1 : size;
}

// Puts the buffer's values into the list in place: the Python instance keeps the same list as an
// attribute, so replacing it would cut the link. A list whose length a script changed is mended.
bool Load(const void *buf, int size, int type_code, PyObject *list)
{
    const Kind kind = KindOf(type_code);
    if (kind == Kind::None || !buf || !PyList_Check(list))
        return true;
    const int n = Count(kind, size);
    for (int i = 0; i < n; ++i) {
        PyObject *item = NewItem(buf, kind, size, i);
        if (!item)
            return false;
        if (i < PyList_GET_SIZE(list))
            PyList_SetItem(list, i, item);  // takes the reference
        else {
            const int failed = PyList_Append(list, item);
            Py_DECREF(item);
            if (failed)
                return false;
        }
    }
    return PyList_GET_SIZE(list) <= n || PyList_SetSlice(list, n, PyList_GET_SIZE(list), nullptr) == 0;
}

bool Store(void *buf, int size, int type_code, PyObject *list)
{
    const Kind kind = KindOf(type_code);
    if (kind == Kind::None || !buf || !PyList_Check(list))
        return true;
    const Py_ssize_t n = std::min(static_cast<Py_ssize_t>(Count(kind, size)), PyList_GET_SIZE(list));
    for (Py_ssize_t i = 0; i < n; ++i)
        if (!StoreItem(buf, kind, size, static_cast<int>(i), PyList_GET_ITEM(list, i)))
            return false;
    return true;
}

template <typename Objects>
bool AllSet(const Objects &objs)
{
    for (PyObject *obj : objs)
        if (!obj)
            return false;
    return true;
}

} // namespace

PyIntf::PyIntf(const char *path, const char *module, const char *class_name)
    : m_name(std::string(module ? module : "") + "." + (class_name ? class_name : ""))
{
    // Not locked: blocks are set up one after another in pre-run, never two at once.
    if (!Py_IsInitialized()) {
        // No signal handlers: Ctrl+C belongs to the host. The lock is let go at once so that every
        // later call, on whichever thread, takes it the same way.
        Py_InitializeEx(0);
        PyEval_SaveThread();
    }
    GilLock gil;
    PyObject *sys_path = PySys_GetObject("path");  // borrowed
    if (path && *path && sys_path && PyList_Check(sys_path)) {
        PyObject *dir = PyUnicode_DecodeFSDefault(path);
        if (!dir || (PySequence_Contains(sys_path, dir) == 0 && PyList_Insert(sys_path, 0, dir) != 0))
            PyErr_Print();
        Py_XDECREF(dir);
    }
    PyObject *mod = PyImport_ImportModule(module ? module : "");
    if (!mod) {
        Fail(PY_INTF_NO_MODULE, "cannot import the module");
        return;
    }
    PyObject *cls = PyObject_GetAttrString(mod, class_name ? class_name : "");
    Py_DECREF(mod);
    if (!cls) {
        Fail(PY_INTF_NO_CLASS, "the module has no such class");
        return;
    }
    m_instance = PyObject_CallObject(cls, nullptr);
    Py_DECREF(cls);
    if (!m_instance)
        Fail(PY_INTF_NO_CLASS, "the class's constructor failed");
}

PyIntf::~PyIntf()
{
    // A host that finalised the interpreter first has taken these objects with it.
    if (!Py_IsInitialized())
        return;
    GilLock gil;
    for (PyObject *&obj : m_port_objs)
        Py_CLEAR(obj);
    for (PyObject *&obj : m_para_objs)
        Py_CLEAR(obj);
    Py_CLEAR(m_init_ports);
    Py_CLEAR(m_init_para);
    Py_CLEAR(m_prerun);
    Py_CLEAR(m_run);
    Py_CLEAR(m_postrun);
    Py_CLEAR(m_instance);
}

// Only the first dimension's size reaches this class, so every list is flat; `ndims` is unused.
void PyIntf::SetPortObject(void *ptr, int, int size, int type_code, int index)
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    if (index < 0 || index >= PYINTF_NPORTS)
        Fail(PY_INTF_BAD_OBJECT, "port index out of range");
    else
        Bind(m_ports[index], m_port_objs[index], ptr, size, type_code);
}

void PyIntf::SetParaObject(void *ptr, int, int size, int type_code, int index)
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    if (index < 0 || index >= PYINTF_NPARA)
        Fail(PY_INTF_BAD_OBJECT, "parameter index out of range");
    else
        Bind(m_paras[index], m_para_objs[index], ptr, size, type_code);
}

void PyIntf::Bind(Binding &binding, PyObject *&obj, void *ptr, int size, int type_code)
{
    binding.ptr = ptr;
    binding.size = size < 0 ? 0 : size;
    binding.type_code = type_code;
    Py_CLEAR(obj);
    if (KindOf(type_code) == Kind::None || !ptr) {
        Py_INCREF(Py_None);
        obj = Py_None;
        return;
    }
    obj = PyList_New(0);
    if (!obj || !Load(ptr, binding.size, type_code, obj))
        Fail(PY_INTF_BAD_OBJECT, "cannot make the list of a port or parameter");
}

void PyIntf::SetMethods()
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    struct Method {
        PyObject **slot;
        const char *name;
    };
    const Method methods[] = {{&m_init_ports, "method_init_ports"}, {&m_init_para, "method_init_para"},
                              {&m_prerun, "method_prerun"}, {&m_run, "method_run"},
                              {&m_postrun, "method_postrun"}};
    for (const Method &method : methods) {
        Py_CLEAR(*method.slot);
        *method.slot = PyObject_GetAttrString(m_instance, method.name);
        if (!*method.slot) {
            Fail(PY_INTF_NO_METHOD, method.name);
            return;
        }
    }
}

void PyIntf::InitPortAttributes()
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    // An unset object would end the argument list early and shift the rest.
    if (!m_init_ports || !AllSet(m_port_objs)) {
        Fail(PY_INTF_BAD_OBJECT, "ports not set up before method_init_ports");
        return;
    }
    // The generator writes one argument per port into this call.
    CallInit(PyObject_CallFunctionObjArgs(m_init_ports, m_port_objs[-1], nullptr), "method_init_ports");
}

void PyIntf::InitParaAttributes()
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    if (!m_init_para || !AllSet(m_para_objs)) {
        Fail(PY_INTF_BAD_OBJECT, "parameters not set up before method_init_para");
        return;
    }
    // The generator writes one argument per parameter into this call.
    CallInit(PyObject_CallFunctionObjArgs(m_init_para, m_para_objs[-1], nullptr), "method_init_para");
}

void PyIntf::CallInit(PyObject *result, const char *name)
{
    if (!result)
        Fail(PY_INTF_CALL_FAILED, name);
    Py_XDECREF(result);
}

void PyIntf::Prerun()
{
    CallStep(m_prerun, "method_prerun");
}

void PyIntf::Run()
{
    CallStep(m_run, "method_run");
}

void PyIntf::Postrun()
{
    CallStep(m_postrun, "method_postrun");
}

// After a failure the status stays set and later steps do nothing, so a broken script reports once
// instead of once every time step.
void PyIntf::CallStep(PyObject *method, const char *name)
{
    if (m_status != PY_INTF_VALID)
        return;
    GilLock gil;
    if (!method) {
        Fail(PY_INTF_NO_METHOD, name);
        return;
    }
    if (!LoadAll()) {
        Fail(PY_INTF_BAD_OBJECT, name);
        return;
    }
    PyObject *result = PyObject_CallObject(method, nullptr);
    if (!result) {
        Fail(PY_INTF_CALL_FAILED, name);
        return;
    }
    Py_DECREF(result);
    if (!StoreAll())
        Fail(PY_INTF_BAD_OBJECT, name);
}

// The class does not know which ports are inputs, so every buffer goes in before a call and comes
// back after it; a script that changes an input list changes the input buffer.
bool PyIntf::LoadAll()
{
    for (int i = 0; i < PYINTF_NPORTS; ++i)
        if (m_port_objs[i] && !Load(m_ports[i].ptr, m_ports[i].size, m_ports[i].type_code, m_port_objs[i]))
            return false;
    for (int i = 0; i < PYINTF_NPARA; ++i)
        if (m_para_objs[i] && !Load(m_paras[i].ptr, m_paras[i].size, m_paras[i].type_code, m_para_objs[i]))
            return false;
    return true;
}

bool PyIntf::StoreAll()
{
    for (int i = 0; i < PYINTF_NPORTS; ++i)
        if (m_port_objs[i] && !Store(m_ports[i].ptr, m_ports[i].size, m_ports[i].type_code, m_port_objs[i]))
            return false;
    for (int i = 0; i < PYINTF_NPARA; ++i)
        if (m_para_objs[i] && !Store(m_paras[i].ptr, m_paras[i].size, m_paras[i].type_code, m_para_objs[i]))
            return false;
    return true;
}

// Called with the lock held. The traceback, if any, goes to the interpreter's standard error.
void PyIntf::Fail(int status, const char *what)
{
    m_status = status;
    fprintf(stderr, "Python interface %s: %s\n", m_name.c_str(), what);
    if (PyErr_Occurred())
        PyErr_Print();
}
