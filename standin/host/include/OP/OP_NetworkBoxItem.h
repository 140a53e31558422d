#ifndef OP_NETWORKBOXITEM_H
#define OP_NETWORKBOXITEM_H

#include <SYS/SYS_Types.h>

/// Anything that has a place in a network editor. Network units; y grows upward; (x, y) is the lower left
/// corner.
class OP_NetworkBoxItem
{
public:
    OP_NetworkBoxItem() : myX(0), myY(0) {}
    virtual ~OP_NetworkBoxItem() {}

    virtual fpreal getX() const { return myX; }
    virtual fpreal getY() const { return myY; }
    virtual fpreal getW() const { return 1; }
    virtual fpreal getH() const { return 1; }

    /// Moves the item as told: no limits, no events. A position that is not finite is taken over too.
    virtual void setXY(fpreal x, fpreal y)
    {
        myX = x;
        myY = y;
    }

private:
    fpreal myX;
    fpreal myY;
};

#endif
