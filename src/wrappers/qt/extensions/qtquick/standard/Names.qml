import com.corvaline.vantle.qtquick 0.1
import com.corvaline.vantle.host 0.1

// Answers for what names of items hold besides their properties: label, tool
// tip, place in a view. Asked last, so that every other extension can answer
// differently.
VantleHook {
    priority: -1000

    function propertyFor(item, name) {
        return ItemNames.valueOf(item, name);
    }
}
