// The bridge between a block's C++ code and the Python class that holds its logic.
//
// The block's source makes one object of this class in its pre-run step: it imports the block's
// module from the block's source directory, makes an instance of the Python class, and hands that
// instance one Python list per port and per parameter. Around every call of a Python method the
// values are copied from the C buffers into the lists and back again, so the Python code reads and
// writes plain numbers and strings and never holds a pointer into C memory. A script changes the
// lists in place (`self.out[0] = x`): a list it binds anew is never copied back.
//
// Each block gets its own copy of this pair with the class, the include guard and the two counts
// renamed and filled in; keep those names as they stand.
#ifndef PY_INTERFACE_TEMPLATE_H
#define PY_INTERFACE_TEMPLATE_H

#include <array>
#include <string>

// Only the interface source needs the Python API, so the block's own source compiles without the
// Python headers.
struct _object;
typedef struct _object PyObject;

// Shared by every block's interface, hence guarded: one translation unit may include several.
#ifndef PY_INTF_VALID
#define PY_INTF_VALID 0         // set up, and no call has failed so far
#define PY_INTF_NO_MODULE 1     // the module did not import
#define PY_INTF_NO_CLASS 2      // the class is missing or its constructor raised
#define PY_INTF_NO_METHOD 3     // one of the five methods is missing
#define PY_INTF_BAD_OBJECT 4    // a bad port or parameter index, or a value that does not convert
#define PY_INTF_CALL_FAILED 5   // a Python method raised
#endif

#define PYINTF_NPORTS 1
#define PYINTF_NPARA 1

class PyIntf
{
public:
    // `path` is the directory of the module; it goes to the front of the module search path.
    PyIntf(const char *path, const char *module, const char *class_name);
    ~PyIntf();
    PyIntf(const PyIntf &) = delete;
    PyIntf &operator=(const PyIntf &) = delete;

    // `ptr` is the C buffer, which must stay valid while this object lives. Type codes: 1 String
    // (one text in a buffer of `size` bytes), 2 Real, 3 Real32, 4 Real64, 5 Integer, 6 Integer16,
    // 7 Integer32_Boolean, 8 Integer64, 9 Byte, 10 Selected Index, 11 Preprocessor Definition
    // (`size` numbers each); any other code gives None and is never copied.
    void SetPortObject(void *ptr, int ndims, int size, int type_code, int index);
    void SetParaObject(void *ptr, int ndims, int size, int type_code, int index);
    void SetMethods();
    // Hand the lists to `method_init_ports` and `method_init_para`, one argument each, in index order.
    void InitPortAttributes();
    void InitParaAttributes();
    int GetStatus() const { return m_status; }
    void Prerun();
    void Run();
    void Postrun();

private:
    // Where the values of one list live on the C side.
    struct Binding {
        void *ptr = nullptr;
        int size = 0;
        int type_code = 0;
    };

    void Bind(Binding &binding, PyObject *&obj, void *ptr, int size, int type_code);
    void CallInit(PyObject *result, const char *name);
    void CallStep(PyObject *method, const char *name);
    bool LoadAll();
    bool StoreAll();
    void Fail(int status, const char *what);

    std::string m_name;               // "module.class", for messages
    int m_status = PY_INTF_VALID;
    PyObject *m_instance = nullptr;
    PyObject *m_init_ports = nullptr;  // bound methods of the instance
    PyObject *m_init_para = nullptr;
    PyObject *m_prerun = nullptr;
    PyObject *m_run = nullptr;
    PyObject *m_postrun = nullptr;
    // std::array rather than a plain array: a block without ports or parameters has a count of 0.
    std::array<Binding, PYINTF_NPORTS> m_ports{};
    std::array<Binding, PYINTF_NPARA> m_paras{};
    std::array<PyObject *, PYINTF_NPORTS> m_port_objs{};
    std::array<PyObject *, PYINTF_NPARA> m_para_objs{};
};

#endif
