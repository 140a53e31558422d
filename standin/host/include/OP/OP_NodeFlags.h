#ifndef OP_NODEFLAGS_H
#define OP_NODEFLAGS_H

/// The plain on/off flags that every node has. A flag change is announced by whoever makes it.
class OP_NodeFlags
{
public:
    OP_NodeFlags()
        : myDisplay(true),
          myRender(true),
          myBypass(false),
          myTemplate(false),
          myLocked(false),
          myPicked(false),
          myExpose(true)
    {
    }

    bool getDisplay() const { return myDisplay; }
    void setDisplay(bool on) { myDisplay = on; }
    bool getRender() const { return myRender; }
    void setRender(bool on) { myRender = on; }
    bool getBypass() const { return myBypass; }
    void setBypass(bool on) { myBypass = on; }
    bool getTemplate() const { return myTemplate; }
    void setTemplate(bool on) { myTemplate = on; }
    bool getHardLock() const { return myLocked; }
    void setHardLock(bool on) { myLocked = on; }
    bool getPicked() const { return myPicked; }
    void setPicked(bool on) { myPicked = on; }
    bool getExpose() const { return myExpose; }
    void setExpose(bool on) { myExpose = on; }

private:
    bool myDisplay;
    bool myRender;
    bool myBypass;
    bool myTemplate;
    bool myLocked;
    bool myPicked;
    bool myExpose;
};

#endif
