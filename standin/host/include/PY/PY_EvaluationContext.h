#ifndef PY_EVALUATION_CONTEXT_H
#define PY_EVALUATION_CONTEXT_H

/// A global namespace of its own for pieces of Python.
///
/// The same object given to two runs shares their names; a second object sees none of them. `hou` is there by
/// name from the start. The namespace is made at its first use (so constructing a context does not start Python) and
/// goes with the object.
class PY_EvaluationContext
{
public:
    PY_EvaluationContext();
    ~PY_EvaluationContext();

    /// The stand-in's own: the namespace as the interpreter's dictionary (a `PyObject*`, borrowed). The caller
    /// holds the interpreter lock. Never null.
    void* globals();

private:
    PY_EvaluationContext(const PY_EvaluationContext&);
    PY_EvaluationContext& operator=(const PY_EvaluationContext&);

    void* myGlobals;
};

#endif
