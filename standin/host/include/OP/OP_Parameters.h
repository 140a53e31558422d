#pragma once
// Values and states of a node's parameters. For the class that derives from it, OP_Node:
//
//  * The constructor makes no parameters. After the node's constructor ran, the host calls
//  buildParms(templates) with
//    the operator's list; spare parameters follow by addSpareParms(). Until then the list is there but empty.
//  * setNameText() keeps the name that getName() returns; doGetFullPath() appends the path (here only the
//  name).
//  * parmChanged(index) is called after a value was stored; the node sends its event from there and
//  refreshes. Here it
//    does nothing. setParmEvents(false) keeps it quiet, for loading.
//  * parmData() must give the OP_Node pointer as void*: callbacks and menu generators cast it back.
//  * findRelative(path) gives the node at a path relative to this one, for ch("../n/p"). Here: only "", "."
//  and null.
//  * findVariable(name, value) knows $OS and the session's variables (CH_Manager); extend it for local
//  variables.
//  * connectedInputCount() and isInputConnected(i) answer ninputs() and hasinput(i). Here nothing is
//  connected.
//  * propertiesNode() gives the node whose parameters serve as further properties, null for none.
//  * refreshParms() is the host's refresh: the hide and disable conditions of every template, then the
//  virtual
//    updateParmsFlags(). Call it after parameter or connection changes.
//  * Python and script menus come in through PRMscriptHooks() of PRM_ParmOwner.h.
//
// Names are tokens; inside a multi-parameter with the instance number ("a_1"). The Inst forms take the name
// with '#' and the numbers. Every form with a trailing T takes the thread's index. No evaluation throws: an
// unknown name, a component out of range or a faulty expression reads as 0 or empty text; expression errors
// are kept in getParmErrors().
#include <CH/CH_ExprLanguage.h>
#include <PRM/PRM_Parm.h>
#include <PRM/PRM_ParmList.h>
#include <PRM/PRM_ParmOwner.h>
#include <SYS/SYS_SequentialThreadIndex.h>
#include <SYS/SYS_Types.h>
#include <UT/UT_String.h>
#include <UT/UT_StringHolder.h>
#include <UT/UT_WorkBuffer.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <utility>

class UT_StringArray;

class OP_Parameters : public PRM_ParmOwner
{
public:
    virtual ~OP_Parameters();

    const UT_String& getName() const { return m_name; }

    // The parameters.
    PRM_ParmList* getParmList() const { return m_parms.get(); }
    int getNumParms() const { return m_parms->getEntries(); }
    /// An index or name that does not exist is an error of the caller: a parameter without a value is
    /// returned, and changing that one changes nothing. Ask hasParm() first.
    PRM_Parm& getParm(int index);
    const PRM_Parm& getParm(int index) const;
    PRM_Parm& getParm(const char* name);
    const PRM_Parm& getParm(const char* name) const;
    /// Null when there is none.
    PRM_Parm* getParmPtr(const char* name) { return m_parms->getParmPtr(name); }
    const PRM_Parm* getParmPtr(const char* name) const
    {
        const PRM_ParmList& parms = *m_parms;
        return parms.getParmPtr(name);
    }
    /// -1 when there is none.
    int getParmIndex(const char* name) const { return m_parms->getParmIndex(name); }
    bool hasParm(const char* name) const { return getParmPtr(name) != 0; }

    /// Host's side: makes the parameters from a template list (null: none), once, after construction.
    void buildParms(PRM_Template* templates);
    /// Host's side: appends spare parameters. The templates must live as long as the node.
    void addSpareParms(PRM_Template* templates);
    bool removeSpareParm(PRM_Parm* parm) { return m_parms->removeSpareParm(parm); }
    /// Host's side: whether parmChanged() is called.
    void setParmEvents(bool on) { m_parms->setNotifying(on); }

    // Evaluation, by index or name; `vi` is the component, `t` the time in seconds.
    exint evalInt(int pi, int vi, fpreal t) const;
    exint evalInt(const char* name, int vi, fpreal t) const;
    exint evalIntT(int pi, int vi, fpreal t, int thread) const;
    exint evalIntT(const char* name, int vi, fpreal t, int thread) const;
    fpreal evalFloat(int pi, int vi, fpreal t) const;
    fpreal evalFloat(const char* name, int vi, fpreal t) const;
    fpreal evalFloatT(int pi, int vi, fpreal t, int thread) const;
    fpreal evalFloatT(const char* name, int vi, fpreal t, int thread) const;
    /// All components into `values`, which has room for the vector size. An unknown parameter writes nothing.
    void evalFloats(int pi, fpreal* values, fpreal t) const;
    void evalFloats(const char* name, fpreal* values, fpreal t) const;
    void evalFloatsT(int pi, fpreal* values, fpreal t, int thread) const;
    void evalFloatsT(const char* name, fpreal* values, fpreal t, int thread) const;
    /// Expanded; `value` gets a private copy.
    void evalString(UT_String& value, int pi, int vi, fpreal t) const;
    void evalString(UT_String& value, const char* name, int vi, fpreal t) const;
    void evalStringT(UT_String& value, int pi, int vi, fpreal t, int thread) const;
    void evalStringT(UT_String& value, const char* name, int vi, fpreal t, int thread) const;
    /// As typed.
    void evalStringRaw(UT_String& value, int pi, int vi, fpreal t) const;
    void evalStringRaw(UT_String& value, const char* name, int vi, fpreal t) const;

    // Multi-parameter instances: `name` with one '#' for each of the `nest` numbers at `inst`, the outermost
    // first.
    exint evalIntInst(const char* name, const int* inst, int vi, fpreal t, int nest = 1) const;
    fpreal evalFloatInst(const char* name, const int* inst, int vi, fpreal t, int nest = 1) const;
    void evalStringInst(const char* name, const int* inst, UT_String& value, int vi, fpreal t,
                        int nest = 1) const;
    exint evalIntInstT(const char* name, const int* inst, int vi, fpreal t, int thread, int nest = 1) const;
    fpreal evalFloatInstT(const char* name, const int* inst, int vi, fpreal t, int thread,
                          int nest = 1) const;
    void setFloatInst(fpreal value, const char* name, const int* inst, int vi, fpreal t, int nest = 1);

    /// Value of the parameter of that name, here or on the properties node. False, and `value` untouched,
    /// when there is none. `source` gets the parameter.
    bool evalParameterOrProperty(const char* name, int vi, fpreal now, int& value,
                                 PRM_Parm** source = 0) const;
    bool evalParameterOrProperty(const char* name, int vi, fpreal now, fpreal& value,
                                 PRM_Parm** source = 0) const;
    bool evalParameterOrProperty(const char* name, int vi, fpreal now, UT_String& value,
                                 PRM_Parm** source = 0) const;
    bool evalParameterOrPropertyT(const char* name, int vi, fpreal now, int& value, int thread,
                                  PRM_Parm** source = 0) const;
    bool evalParameterOrPropertyT(const char* name, int vi, fpreal now, fpreal& value, int thread,
                                  PRM_Parm** source = 0) const;
    bool evalParameterOrPropertyT(const char* name, int vi, fpreal now, UT_String& value, int thread,
                                  PRM_Parm** source = 0) const;

    // Setting: as PRM_Parm::setValue. Unknown names do nothing.
    void setInt(int pi, int vi, fpreal t, exint value);
    void setInt(const char* name, int vi, fpreal t, exint value);
    void setFloat(int pi, int vi, fpreal t, fpreal value, PRM_AddKeyType addKey = PRM_AK_NEVER);
    void setFloat(const char* name, int vi, fpreal t, fpreal value, PRM_AddKeyType addKey = PRM_AK_NEVER);
    void setString(const UT_String& value, CH_StringMeaning meaning, int pi, int vi, fpreal t);
    void setString(const UT_String& value, CH_StringMeaning meaning, const char* name, int vi, fpreal t);
    bool setParameterOrProperty(const char* name, int vi, fpreal now, int value);
    bool setParameterOrProperty(const char* name, int vi, fpreal now, fpreal value);
    bool setParameterOrProperty(const char* name, int vi, fpreal now, const UT_String& value);

    // States. Both return whether a state changed; an unknown name or index changes nothing.
    bool enableParm(const char* name, int state, int vi = -1);
    bool enableParm(int index, int state, int vi = -1);
    bool setVisibleState(const char* name, bool state, int vi = -1);
    bool setVisibleState(int index, bool state, int vi = -1);
    /// Host's refresh. Returns whether a state differs from what it was before.
    bool refreshParms();

    // What a person does, as opposed to a script.
    /// A value typed into the parameter pane: a literal text, limited to the range, stored; then the
    /// template's callback is called. Both are one step of undo. For an action menu (a button with a menu) the text
    /// is the token or index of the item that was chosen, and nothing is stored. False, with a sentence in `why` (may
    /// be null), when the text is no value for the parameter.
    bool enterParm(PRM_Parm& parm, int vi, const char* text, fpreal t, std::string* why = 0);
    /// Calls the template's callback; `index` is the menu item of an action menu, else the component. Returns
    /// what the callback returns, 0 when there is none. An exception of the callback is kept as the
    /// parameter's error.
    ///
    /// The callback of a parameter inside multi-parameters gets a template of its own that lives as long as the call
    /// and has the instance's token ("a_2", not "a_#"), so that the token finds the parameter. The callback may change
    /// and delete anything, the node too.
    int pressParm(PRM_Parm& parm, int index, fpreal t);

    /// Expands $VAR and `expressions` in a text with this node's eyes. False with a sentence when something
    /// in it has no value; the rest is expanded.
    bool expandString(const char* text, fpreal t, int thread, std::string& result, std::string& error);
    /// Evaluates an expression that belongs to no parameter.
    bool evalExpression(const char* text, CH_ExprLanguage language, fpreal t, int thread, CH_ExprValue& value,
                        std::string& error);

    /// The sentences of parameters that have no value at present: "<path>/<channel>: <what is wrong>".
    void getParmErrors(UT_StringArray& errors) const;

    // The parameter list's questions; see the top of this file.
    void parmChanged(int index) override;
    void* parmData() override;
    OP_Parameters* parmNode() override;
    PRM_Parm* findChannel(const char* path, int& component) override;
    bool findVariable(const char* name, std::string& value) override;
    int connectedInputCount() const override;
    bool isInputConnected(int index) const override;
    void setParmError(const PRM_Parm& parm, int component, const std::string& sentence) override;

protected:
    OP_Parameters();

    /// Refreshes enable and visible states; returns whether one changed. Called by the host after it applied
    /// the templates' conditions. Here: false.
    virtual bool updateParmsFlags();
    /// Applies the template's condition to the parameter. Without a condition, `force` enables the parameter.
    /// Returns whether the state changed. `skip` names parameters whose terms do not count.
    bool updateParmDisableConditional(PRM_Parm& parm, bool force, const UT_StringArray* skip = 0);
    bool updateParmHideConditional(PRM_Parm& parm, const UT_StringArray* skip = 0);

    /// Appends the path of the node.
    virtual void doGetFullPath(UT_WorkBuffer& path) const;
    virtual OP_Parameters* findRelative(const char* path);
    virtual OP_Parameters* propertiesNode() const;

    void setNameText(const char* name);

private:
    OP_Parameters(const OP_Parameters&);
    OP_Parameters& operator=(const OP_Parameters&);

    const PRM_Parm* findParm(int index) const
    {
        const PRM_ParmList& parms = *m_parms;
        return parms.getParmPtr(index);
    }
    const PRM_Parm* findParm(const char* name) const { return getParmPtr(name); }
    PRM_Parm* findParameterOrProperty(const char* name, OP_Parameters** node = 0) const;
    PRM_Parm& noParm() const;

    UT_String m_name;
    std::unique_ptr<PRM_ParmList> m_parms;
    mutable std::unique_ptr<PRM_ParmList> m_noParms; // the parameter of getParm() for what does not exist
    mutable std::mutex m_errorMutex;
    std::map<std::pair<std::string, int>, std::string> m_errors; // by token and component
    std::atomic<bool> m_hasErrors;
    bool m_refreshing;
};
