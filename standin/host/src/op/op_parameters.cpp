#include <OP/OP_Parameters.h>

#include <CH/CH_Manager.h>
#include <UT/UT_StringArray.h>
#include <UT/UT_UndoManager.h>

#include "prm/prm_ownercontext.h"

#include <cmath>
#include <exception>

OP_Parameters::OP_Parameters()
    : m_name(UT_String::ALWAYS_DEEP, ""),
      m_parms(new PRM_ParmList(this)),
      m_hasErrors(false),
      m_refreshing(false)
{
}

OP_Parameters::~OP_Parameters() {}

void OP_Parameters::setNameText(const char* name) { m_name = name ? name : ""; }

void OP_Parameters::buildParms(PRM_Template* templates) { m_parms->addTemplates(templates, false); }

void OP_Parameters::addSpareParms(PRM_Template* templates) { m_parms->addTemplates(templates, true); }

PRM_Parm& OP_Parameters::noParm() const
{
    static PRM_Template templates[] = {PRM_Template(PRM_TYPE_ZERO), PRM_Template()};
    const std::lock_guard<std::mutex> lock(m_errorMutex);
    if (!m_noParms)
    {
        m_noParms.reset(new PRM_ParmList(nullptr));
        m_noParms->addTemplates(templates, false);
    }
    return *m_noParms->getParmPtr(0);
}

PRM_Parm& OP_Parameters::getParm(int index)
{
    PRM_Parm* parm = m_parms->getParmPtr(index);
    return parm ? *parm : noParm();
}

const PRM_Parm& OP_Parameters::getParm(int index) const
{
    const PRM_Parm* parm = findParm(index);
    return parm ? *parm : noParm();
}

PRM_Parm& OP_Parameters::getParm(const char* name)
{
    PRM_Parm* parm = getParmPtr(name);
    return parm ? *parm : noParm();
}

const PRM_Parm& OP_Parameters::getParm(const char* name) const
{
    const PRM_Parm* parm = findParm(name);
    return parm ? *parm : noParm();
}

bool OP_Parameters::expandString(const char* text, fpreal t, int thread, std::string& result,
                                 std::string& error)
{
    PRM_OwnerContext context(*m_parms, t, thread);
    return CHexpandString(text, context, result, error);
}

bool OP_Parameters::evalExpression(const char* text, CH_ExprLanguage language, fpreal t, int thread,
                                   CH_ExprValue& value, std::string& error)
{
    if (language == CH_OLD_EXPR_LANGUAGE)
    {
        PRM_OwnerContext context(*m_parms, t, thread);
        return CH_Expression(text ? text : "").evaluate(context, value, error);
    }
    value = CH_ExprValue();
    error = "nothing here runs Python";
    const CH_AutoEvalTime now(thread, t);
    return PRMscriptHooks().evaluatePython &&
           PRMscriptHooks().evaluatePython(this, text ? text : "", t, thread, value, error);
}

namespace
{
bool refuse(const PRM_Parm& parm, const char* text, const char* remedy, std::string* why)
{
    if (why)
        *why = std::string("\"") + (text ? text : "") + "\" is no value for the parameter \"" +
               parm.getToken() + "\"; " + remedy;
    return false;
}

/// Index of the menu item that a text names by token or number; -1 when it names none.
int chosenItem(const PRM_Parm& parm, const char* text)
{
    const int named = parm.findMenuItem(text);
    fpreal index = -1;
    if (named >= 0 || !text || !parm.readLiteral(text, index) || index != std::floor(index))
        return named;
    const PRM_ChoiceList* menu = parm.getTemplatePtr()->getChoiceListPtr();
    return index >= 0 && index < menu->getSize(&parm) ? static_cast<int>(index) : -1;
}

/// The template that a callback gets; see pressParm().
class CalledTemplate
{
public:
    explicit CalledTemplate(PRM_Parm& parm)
        : m_token(parm.getToken()),
          m_label(parm.getLabel()),
          m_name(m_token.c_str(), m_label.c_str()),
          m_copy(*parm.getTemplatePtr()),
          m_given(parm.isMultiParmInstance() ? &m_copy : parm.getTemplatePtr())
    {
        m_copy.setNamePtr(&m_name);
    }
    CalledTemplate(const CalledTemplate&) = delete;
    CalledTemplate& operator=(const CalledTemplate&) = delete;

    const PRM_Template* get() const { return m_given; }

private:
    std::string m_token;
    std::string m_label;
    PRM_Name m_name;
    PRM_Template m_copy;
    const PRM_Template* m_given;
};
} // namespace

bool OP_Parameters::enterParm(PRM_Parm& parm, int vi, const char* text, fpreal t, std::string* why)
{
    if (parm.isActionMenu())
    {
        const int item = chosenItem(parm, text);
        if (item < 0)
            return refuse(parm, text, "choose one of its menu's items", why);
        pressParm(parm, item, t);
        return true;
    }
    const UT_AutoUndoBlock step("Parameter Change", ANYLEVEL);
    const PRM_Range* range = parm.getTemplatePtr()->getRangePtr();
    const std::weak_ptr<const char> alive = m_parms->getLifetime();
    fpreal value = 0;
    bool stored = false;
    if (parm.getType().isStringType())
        stored = parm.setValue(t, text, CH_STRING_LITERAL, true, PRM_AK_NEVER, vi);
    else if (text && parm.readLiteral(text, value))
    {
        if (range)
            range->constrain(value);
        stored = parm.setValue(t, value, true, PRM_AK_NEVER, vi);
    }
    if (!stored)
        return refuse(parm, text, "enter a number or one of its menu's items", why);
    if (!alive.expired() && m_parms->getParmIndex(&parm) >= 0)
        pressParm(parm, vi, t);
    return true;
}

int OP_Parameters::pressParm(PRM_Parm& parm, int index, fpreal t)
{
    const CalledTemplate tmpl(parm);
    const PRM_Callback callback = tmpl.get()->getCallback();
    const std::weak_ptr<const char> alive = m_parms->getLifetime();
    std::string problem;
    int result = 0;
    try
    {
        result = callback(parmData(), index, t, tmpl.get());
    }
    catch (const std::exception& thrown)
    {
        problem = std::string("its callback failed: ") + thrown.what();
    }
    catch (...)
    {
        problem = "its callback failed for a reason that it did not tell";
    }
    if (!alive.expired() && m_parms->getParmIndex(&parm) >= 0)
        setParmError(parm, PRM_CALLBACK_ERROR, problem);
    return result;
}

void OP_Parameters::setParmError(const PRM_Parm& parm, int component, const std::string& sentence)
{
    if (sentence.empty() && !m_hasErrors)
        return;
    const std::lock_guard<std::mutex> lock(m_errorMutex);
    const std::pair<std::string, int> key(parm.getToken(), component);
    if (sentence.empty())
        m_errors.erase(key);
    else
        m_errors[key] = parm.getChannelToken(std::max(component, 0)).toStdString() + ": " + sentence;
    m_hasErrors = !m_errors.empty();
}

void OP_Parameters::getParmErrors(UT_StringArray& errors) const
{
    UT_WorkBuffer path;
    doGetFullPath(path);
    const std::lock_guard<std::mutex> lock(m_errorMutex);
    for (const auto& error : m_errors)
        errors.append(std::string(path.buffer()) + "/" + error.second);
}

void OP_Parameters::parmChanged(int) {}

void* OP_Parameters::parmData() { return this; }

OP_Parameters* OP_Parameters::parmNode() { return this; }

PRM_Parm* OP_Parameters::findChannel(const char* path, int& component)
{
    const std::string text = path ? path : "";
    const std::size_t slash = text.rfind('/');
    const std::string channel = slash == std::string::npos ? text : text.substr(slash + 1);
    // "/name" is a channel of the root.
    const std::string node = slash == std::string::npos ? "" : slash == 0 ? "/" : text.substr(0, slash);
    OP_Parameters* holder = findRelative(node.c_str());
    return holder ? holder->m_parms->getParmPtrFromChannel(channel.c_str(), &component) : nullptr;
}

bool OP_Parameters::findVariable(const char* name, std::string& value)
{
    if (std::string(name) == "OS")
    {
        value = m_name.toStdString();
        return true;
    }
    return CHgetManager()->getVariable(name, value);
}

int OP_Parameters::connectedInputCount() const { return 0; }

bool OP_Parameters::isInputConnected(int) const { return false; }

void OP_Parameters::doGetFullPath(UT_WorkBuffer& path) const { path.append(m_name.buffer()); }

OP_Parameters* OP_Parameters::findRelative(const char* path)
{
    return !*path || std::string(path) == "." ? this : nullptr;
}

OP_Parameters* OP_Parameters::propertiesNode() const { return nullptr; }
