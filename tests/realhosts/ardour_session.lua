-- A session with TvDelay on a track: prints what Ardour knows of the effect, line by line.
AudioEngine:set_backend("None (Dummy)", "", "")
AudioEngine:start()
local session = assert(create_session(os.getenv("TVDELAY_SESSION"), "session", 44100))
local processor = ARDOUR.LuaAPI.new_plugin(session, "TvDelay", ARDOUR.PluginType.LXVST, "")
assert(not processor:isnil(), "Ardour does not know the plug-in")
local track = session:new_audio_track(2, 2, nil, 1, "track", ARDOUR.PresentationInfo.max_order,
    ARDOUR.TrackMode.Normal, true):front()
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses it")
local plugin = processor:to_insert():plugin(0)

local function print_parameters(title)
    for i = 0, plugin:parameter_count() - 1 do
        local _, results = plugin:get_parameter_descriptor(i, ARDOUR.ParameterDescriptor())
        print(string.format("%s %d '%s' %.9g", title, i, results[2].label,
            (ARDOUR.LuaAPI.get_processor_param(processor, i))))
    end
end

print_parameters("start")
for _, name in ipairs { "Bubbly", "CloudFishing", "Punk" } do
    local preset = plugin:preset_by_label(name)
    print("program", name, preset.uri, plugin:load_preset(preset))
    print_parameters(name)
end
assert(ARDOUR.LuaAPI.set_processor_param(processor, 8, 0.25), "the parameter refuses its value")
print_parameters("set")
