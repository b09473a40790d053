import com.corvaline.vantle.host 0.1
import com.corvaline.vantle.qtquick 0.1

// Has recorded input name what answers it: a control, not what its style made
// it of nor what lies on top and lets the input through. How Qt delivers input
// QML cannot tell, so this only passes the question on. Asked last, so that
// every other extension can decide differently.
VantleHook {
    priority: -1000

    function isIgnored(item) {
        return Input.passesOver(item) ? true : unhandled;
    }
}
