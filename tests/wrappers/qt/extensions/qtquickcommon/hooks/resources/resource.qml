import com.corvaline.vantle.qtquick 0.1

VantleHook {
    priority: 23
}
